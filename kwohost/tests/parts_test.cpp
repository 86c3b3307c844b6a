#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <utility>

#include "com_support/owned_array.h"
#include "error_report.h"
#include "fault_guard.h"
#include "font.h"
#include "memory.h"
#include "message_loop.h"
#include "output.h"
#include "run_script.h"
#include "units.h"
#include "user_input.h"
#include "value_text.h"

namespace kwohost::tests {

namespace {

VARIANT Of(VARTYPE type) {
    VARIANT value = {};
    value.vt = type;
    return value;
}

}  // namespace

TEST(ErrorReport, RunTimeErrorShowsItsShortNumber) {
    EXPECT_EQ(Format({L"a.vbs", 3, 5, static_cast<HRESULT>(0x800A000D), L"Engine", L"Type mismatch"}),
              L"a.vbs(3, 5): 13 (0x800A000D) Engine: Type mismatch");
}

TEST(ErrorReport, OtherCodesShowAsSigned) {
    EXPECT_EQ(Format({L"a.vbs", 1, 0, static_cast<HRESULT>(0x80047530), L"S", L"D"}),
              L"a.vbs(1): -2147191504 (0x80047530) S: D");
    EXPECT_EQ(Format({L"a.vbs", 0, 0, -5, L"", L"D"}), L"a.vbs: -5 (0xFFFFFFFB): D");
}

TEST(ErrorReport, MissingDescriptionIsTheTextOfTheCode) {
    EXPECT_EQ(Format({L"a.vbs", 1, 1, DISP_E_BADPARAMCOUNT, L"", L""}),
              L"a.vbs(1, 1): -2147352562 (0x8002000E): Wrong number of arguments");
    EXPECT_EQ(Format({L"a.vbs", 1, 1, static_cast<HRESULT>(0x800A0035), L"", L""}),
              L"a.vbs(1, 1): 53 (0x800A0035): File not found");
    EXPECT_EQ(Format({L"a.vbs", 1, 1, static_cast<HRESULT>(0x800A802B), L"", L""}),
              L"a.vbs(1, 1): 32811 (0x800A802B): Element not found");
    EXPECT_EQ(Format({L"a.vbs", 1, 1, static_cast<HRESULT>(0x800A00FF), L"", L""}),
              L"a.vbs(1, 1): 255 (0x800A00FF): Unknown error");
    EXPECT_EQ(Format({L"a.vbs", 1, 1, static_cast<HRESULT>(0x80020035), L"", L""}),
              L"a.vbs(1, 1): -2147352523 (0x80020035): Unknown error");
    EXPECT_EQ(Format({L"a.vbs", 1, 1, static_cast<HRESULT>(0x8ABCDEF0), L"", L""}),
              L"a.vbs(1, 1): -1967333648 (0x8ABCDEF0): Unknown error");
}

TEST(FaultGuard, FindsAReDimThatEndsTheEngineOfWine) {
    const auto lineOf = [](const std::wstring& text) {
        return LineThatEndsTheEngine({L"a.vbs", Language::VBScript, text});
    };
    EXPECT_EQ(lineOf(L"Dim a()\r\nx = 1\r\nReDim a(3)"), 3);
    EXPECT_EQ(lineOf(L"Private x, List ()\r\n"), 0);
    EXPECT_EQ(lineOf(L"Private x, List ()\r\nReDim List(3)"), 2);
    EXPECT_EQ(lineOf(L"Dim  a\t(  ) , b( )\r\nReDim  Preserve\tb  (3)"), 2);
    EXPECT_EQ(lineOf(L"dim x, Rows()\r\n\r\n\tIf y Then : REDIM  Preserve rows(2)\r\n"), 3);
    EXPECT_EQ(lineOf(L"Dim a(), b\r\nReDim b(3)\r\nReDim c(3)"), 0);
    EXPECT_EQ(lineOf(L"Dim a\r\nReDim a(3)"), 0);
    EXPECT_EQ(lineOf(L"' Dim a()\r\nx = \"Dim a()\"\r\nReDim a(3)"), 0);
    EXPECT_EQ(lineOf(L""), 0);
    EXPECT_EQ(LineThatEndsTheEngine({L"a.js", Language::JScript, L"Dim a()\r\nReDim a(3)"}), 0);
}

TEST(ValueText, FollowsTheLanguage) {
    VARIANT yes = Of(VT_BOOL);
    yes.boolVal = VARIANT_TRUE;
    EXPECT_EQ(ValueText(yes, Language::VBScript), L"True");
    EXPECT_EQ(ValueText(yes, Language::JScript), L"true");
    EXPECT_EQ(ValueText(Of(VT_BOOL), Language::VBScript), L"False");
    EXPECT_EQ(ValueText(Of(VT_BOOL), Language::JScript), L"false");
    EXPECT_EQ(ValueText(Of(VT_NULL), Language::VBScript), L"Null");
    EXPECT_EQ(ValueText(Of(VT_NULL), Language::JScript), L"null");
    EXPECT_EQ(ValueText(Of(VT_EMPTY), Language::VBScript), L"");
    EXPECT_EQ(ValueText(Of(VT_EMPTY), Language::JScript), L"undefined");
}

TEST(ValueText, NumbersOfJScriptAreAsTheLanguageWritesThem) {
    const struct {
        double number;
        const wchar_t* text;
    } kNumbers[] = {
        {0, L"0"},
        {-0.0, L"0"},
        {1, L"1"},
        {-2.5, L"-2.5"},
        {1.0 / 3, L"0.3333333333333333"},
        {0.1, L"0.1"},
        {100, L"100"},
        {123.456, L"123.456"},
        {1e20, L"100000000000000000000"},
        {1.5e20, L"150000000000000000000"},
        {1e21, L"1e+21"},
        {1.25e21, L"1.25e+21"},
        {1e-6, L"0.000001"},
        {1.5e-6, L"0.0000015"},
        {1e-7, L"1e-7"},
        {1.5e-7, L"1.5e-7"},
        {5e-324, L"5e-324"},
        {1.7976931348623157e308, L"1.7976931348623157e+308"},
        {std::numeric_limits<double>::infinity(), L"Infinity"},
        {-std::numeric_limits<double>::infinity(), L"-Infinity"},
        {std::numeric_limits<double>::quiet_NaN(), L"NaN"},
    };
    for (const auto& [number, text] : kNumbers) {
        VARIANT value = Of(VT_R8);
        value.dblVal = number;
        EXPECT_EQ(ValueText(value, Language::JScript), text);
    }
    VARIANT single = Of(VT_R4);
    single.fltVal = 0.1F;
    EXPECT_EQ(ValueText(single, Language::JScript), L"0.10000000149011612");
}

TEST(ValueText, DatesOfJScriptAreMonthDayYear) {
    VARIANT date = Of(VT_DATE);
    date.date = 45'000.5;
    EXPECT_EQ(ValueText(date, Language::JScript), L"03/15/2023 12:00:00");
}

TEST(ValueText, WhatHasNoTextIsAnError) {
    const auto failure = [](const VARIANT& value) {
        try {
            ValueText(value, Language::VBScript);
        } catch (const ScriptFailure& reason) {
            return reason.code;
        }
        return S_OK;
    };
    EXPECT_EQ(failure(Of(VT_DISPATCH)), ToResult(RuntimeError::NoObjectSet));
    const kwo::com_support::OwnedArray two(VT_VARIANT, 0, 2);
    VARIANT array = Of(VT_ARRAY | VT_VARIANT);
    array.parray = two.Get();
    EXPECT_EQ(failure(array), ToResult(RuntimeError::TypeMismatch));
}

/// Runs the messages of this thread, of which each makes another. Returns how many were handled.
int HandledOfAFlood(std::chrono::milliseconds duration) {
    int handled = 0;
    const auto another = [&handled] {
        ++handled;
        PostThreadMessageW(GetCurrentThreadId(), WM_APP, 0, 0);
    };
    another();
    EXPECT_FALSE(RunMessages(duration, another));
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
    return handled;
}

TEST(MessageLoop, EndsInTimeAlsoUnderAFloodOfMessages) {
    const auto start = std::chrono::steady_clock::now();

    const int handled = HandledOfAFlood(std::chrono::milliseconds(100));

    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_GT(handled, 2);
    EXPECT_GE(took, std::chrono::milliseconds(100));
    EXPECT_LT(took, std::chrono::seconds(10));
}

TEST(MessageLoop, WaitOfNoLengthRunsAllPendingMessages) {
    int handled = 0;
    for (int i = 0; i < 5; ++i)
        PostThreadMessageW(GetCurrentThreadId(), WM_APP, 0, 0);

    EXPECT_FALSE(RunMessages(std::chrono::milliseconds(0), [&handled] { ++handled; }));

    EXPECT_EQ(handled, 5);
}

TEST(MessageLoop, PendingMessagesThatMakeNewOnesComeToAnEnd) {
    const auto start = std::chrono::steady_clock::now();

    EXPECT_GT(HandledOfAFlood(std::chrono::milliseconds(0)), 10);

    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_GE(took, std::chrono::milliseconds(500));
    EXPECT_LT(took, std::chrono::seconds(10));
}

TEST(MessageLoop, RequestToQuitEndsTheWaitAtOnceWithItsCode) {
    const auto start = std::chrono::steady_clock::now();

    PostQuitMessage(12);
    EXPECT_EQ(RunMessages(std::chrono::milliseconds(60000), [] {}), 12);

    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(ConsoleOutput, SurrogatePairIsNotCut) {
    const auto chunkOf = [](std::size_t before) {
        return ConsoleChunk(std::wstring(before, L'a') + L"\xD83D\xDE00" + std::wstring(9000, L'b'));
    };
    EXPECT_EQ(ConsoleChunk(L""), 0U);
    EXPECT_EQ(ConsoleChunk(std::wstring(8192, L'a')), 8192U);
    EXPECT_EQ(ConsoleChunk(std::wstring(8193, L'a')), 8192U);
    EXPECT_EQ(chunkOf(8190), 8192U);
    EXPECT_EQ(chunkOf(8191), 8191U);
    EXPECT_EQ(chunkOf(8192), 8192U);
}

TEST(UserInput, KeysThatACharacterNeeds) {
    using Keys = std::vector<WORD>;
    EXPECT_EQ(ModifiersOf(0), Keys());
    EXPECT_EQ(ModifiersOf(1), Keys({VK_SHIFT}));
    EXPECT_EQ(ModifiersOf(2), Keys({VK_CONTROL}));
    EXPECT_EQ(ModifiersOf(6), Keys({VK_CONTROL, VK_MENU}));
    EXPECT_EQ(ModifiersOf(7), Keys({VK_SHIFT, VK_CONTROL, VK_MENU}));
    EXPECT_EQ(ModifiersOf(8), Keys());
}

TEST(RunScript, EndsInOrderWhereverMemoryIsUsedUp) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    int failures = 0;
    int exitCode = 1;
    for (bool hasFailed = true; hasFailed; ++failures) {
        SourceFile source{L"C:\\script.vbs", Language::VBScript, L"WScript.Arguments.Count"};
        const int before = std::exchange(exitCode, 1);
        const FailingAllocation failing(failures);
        try {
            exitCode = RunScript(std::move(source), {L"argument"});
        } catch (const std::bad_alloc&) {
        }
        hasFailed = failing.HasFailed();
        // Behind the script's own end, its result stands.
        EXPECT_LE(exitCode, before) << failures;
    }
    EXPECT_EQ(exitCode, 0);
    EXPECT_GT(failures, 30);
    CoUninitialize();
}

namespace {

LONG HeightOf(const Font& font) {
    LOGFONTW description = {};
    GetObjectW(font.Handle(), sizeof description, &description);
    return description.lfHeight;
}

ComPtr<IDispatch> MakeFont(double points) {
    FONTDESC description = {};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = const_cast<LPOLESTR>(L"Arial");
    description.cySize.int64 = std::llround(points * 10'000);
    description.sWeight = FW_NORMAL;
    ComPtr<IDispatch> font;
    OleCreateFontIndirect(&description, IID_IDispatch, font.OutVoid());
    return font;
}

}  // namespace

TEST(FontUnits, TwipsAreWholeAtTheDensityOfThisRun) {
    wchar_t wanted[8] = L"96";
    GetEnvironmentVariableW(L"KWO_DPI", wanted, 8);
    const int dots = static_cast<int>(std::wcstol(wanted, nullptr, 10));
    EXPECT_EQ(std::nearbyint(1440.0 / dots), TwipsPerPixel(Axis::X));
    EXPECT_EQ(std::nearbyint(1440.0 / dots), TwipsPerPixel(Axis::Y));
}

TEST(FontUnits, FailureAfterAChangeIsNotTheFontObjects) {
    Font font;
    int changes = 0;
    font.WhenChanged([&changes] {
        ++changes;
        Fail(E_OUTOFMEMORY);
    });
    CY size = {};
    size.int64 = 120'000;

    EXPECT_EQ(font.Object().As<IFont>()->put_Size(size), S_OK);

    EXPECT_GT(changes, 0);
}

TEST(FontUnits, APointIsTwentyTwips) {
    const double twips = TwipsPerPixel(Axis::Y);
    Font font;
    EXPECT_NEAR(8.25 * 20 / twips, -HeightOf(font), 0.5);
    for (const int pixels : {11, 13, 16, 22, 27, 40}) {
        font.Share(MakeFont(pixels * twips / 20).Get());
        EXPECT_EQ(-pixels, HeightOf(font));
    }
}

}  // namespace kwohost::tests
