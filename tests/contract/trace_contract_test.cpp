#include <regex>

#include "component/component.h"
#include "contract_test.h"
#include "frame/fixed_digits.h"

namespace kwo::contract {
namespace {

class TraceContract : public ContractTest {
protected:
    component::Component component{platform()};
    frame::Trace& trace = component.trace;

    std::vector<std::string> File() {
        std::vector<std::string> lines;
        std::string content = outside().ContentOf(trace.FileName()).value_or("");
        for (std::size_t end; (end = content.find("\r\n")) != std::string::npos; content.erase(0, end + 2))
            lines.push_back(content.substr(0, end));
        EXPECT_EQ(content, "");
        return lines;
    }
    static void ExpectLines(const std::vector<std::string>& lines, const std::vector<std::string>& patterns) {
        ASSERT_EQ(lines.size(), patterns.size());
        for (std::size_t line = 0; line < lines.size(); ++line)
            EXPECT_TRUE(std::regex_match(lines[line], std::regex(patterns[line]))) << lines[line];
    }
    std::string Ansi(TextView text) { return platform().conversions.ToAnsi(text); }

    /// A time of day, and the milliseconds since the line before with the locale's own point.
    const std::string time = R"(\d\d:\d\d:\d\d \d{3,}[.,]\d\d)";
    const std::string rule = R"([-./0-9]+ ={60})";
};

TEST_F(TraceContract, AWholeTraceInARealFile) {
    trace.SetTraceFolder(outside().EmptyFolder());
    trace.KWO_TraceStart(1, 0, false);
    trace.KWO_RoutinePush(u"MKWORoutines.KWOMsgBox");
    trace.KWO_TraceWrite(u"caf\u00E9\r\nsecond", true, true);
    EXPECT_GE(File().size(), 5u) << "others read along";
    EXPECT_THROW(component.error.KWO_RaiseError(5, {}), platform::ComponentError);
    trace.KWO_RoutinePop();
    trace.KWO_TraceClose(false);

    const std::string name = Ansi(platform().host.ExecutableName());
    ExpectLines(
        File(),
        {rule, time + "  Trace Log started for " + name + R"( \d+\.\d+\.\d+ Process ID=\d+, UserId=.+, Machine=.+)",
         time + "  Push MKWORoutines.KWOMsgBox", time + "      caf\xE9", time + " {19}second",
         time + R"(      Raising error #-5:Access( is)? denied\. MKWORoutines\.KWOMsgBox)",
         time + R"(  Pop  MKWORoutines\.KWOMsgBox Dur=\d+[.,]\d{3}ms)", time + "  Trace closed.", rule});
    EXPECT_EQ(trace.FileName(), outside().EmptyFolder() + u"\\" + platform().host.ExecutableName() + u".log");
}

TEST_F(TraceContract, TheNextFileHasTheNextNumber) {
    trace.SetTraceFolder(outside().EmptyFolder() + u"\\");
    outside().MakeFolder(outside().EmptyFolder() + u"\\" + platform().host.ExecutableName() + u"1.log");
    trace.KWO_TraceStart(0, 0, false);
    trace.KWO_TraceClose(false);
    trace.KWO_TraceStart(0, 0, false);
    EXPECT_EQ(trace.FileName(), outside().EmptyFolder() + u"\\" + platform().host.ExecutableName() + u"2.log");
    trace.KWO_TraceClose(false);
}

TEST_F(TraceContract, MemoryIsCountedFromNothing) {
    trace.SetTraceFolder(outside().EmptyFolder());
    trace.KWO_TraceStart(0, 0, true);
    ASSERT_GE(File().size(), 3u);
    const std::string counter = R"([0-9.,]+ \+[0-9.,]+\. )";
    EXPECT_TRUE(std::regex_match(
        File()[1], std::regex(R"(\.\.\.Memory use changed\. Page Faults=[0-9.,]+ Page File=)" + counter +
                              "(Paged Pool=" + counter + ")?(Non-Paged Pool=" + counter + ")?Working Set=" + counter)))
        << File()[1];
    trace.KWO_TraceClose(false);
}

TEST_F(TraceContract, AFileThatTheUserDoesNotWantIsDeleted) {
    trace.SetTraceFolder(outside().EmptyFolder());
    trace.KWO_TraceStart(0, 0, false);
    outside().AnswerNextBox(6);
    trace.KWO_TraceClose(true);
    EXPECT_EQ(outside().ContentOf(trace.FileName()), std::nullopt);
}

TEST_F(TraceContract, AFolderThatIsMissingOrTakesNoFileIsTheCallersError) {
    trace.SetTraceFolder(outside().EmptyFolder() + u"\\none");
    EXPECT_EQ(RaisedNumber([&] { trace.KWO_TraceStart(0, 0, false); }), -3);
    EXPECT_FALSE(trace.IsRecording());
    trace.SetTraceFolder(outside().FolderThatTakesNoFile());
    EXPECT_EQ_BUT_WINE(RaisedNumber([&] { trace.KWO_TraceStart(0, 0, false); }), -5, -2);
    EXPECT_FALSE(trace.IsRecording());
}

TEST_F(TraceContract, LeavesTheLastErrorAlone) {
    trace.SetTraceFolder(outside().EmptyFolder());
    trace.KWO_TraceStart(0, 0, true);
    platform().errors.SetLast(1234);
    trace.KWO_RoutinePush(u"A.B");
    trace.KWO_RoutinePop();
    trace.KWO_TraceClose(false);
    EXPECT_EQ(platform().errors.Last(), 1234);
}

TEST_F(TraceContract, ItsDigitsAreThoseOfTheConversions) {
    platform::Conversions& conversions = platform().conversions;
    const Text point = frame::DecimalPoint(conversions);
    for (const std::int64_t scaled :
         {0, 4, 5, 6, 49, 50, 51, 1'234, 1'535, 9'995, 24'100, 24'149, 24'151, 9'999'999, 10'000'000, 123'456'789}) {
        const platform::Currency value{scaled};
        Text duration;
        frame::AppendFixedDigits(duration, value, 1, 3, point);
        EXPECT_EQ(Printed(duration), Printed(conversions.FormatNumber(value.AsDouble(), u"#0.000")));
        Text span = u" ";
        frame::AppendFixedDigits(span, value, 3, 2, point);
        EXPECT_EQ(Printed(span), Printed(conversions.FormatNumber(value.AsDouble(), u" 000.00")));
    }
}

}  // namespace
}  // namespace kwo::contract
