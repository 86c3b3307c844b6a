#include <cstdio>

#include "script_test.h"

namespace kwohost::tests {

namespace {

using EventsTest = ScriptTest;

class JScriptEventsTest : public EventsTest {
protected:
    JScriptEventsTest() : EventsTest(Language::JScript) {}
};

const std::wstring kTickNotes =
    L"Sub s_Tick(n)\r\n"
    L"Source.Note \"s\" & n\r\n"
    L"End Sub\r\n"
    L"Sub t_Tick(n)\r\n"
    L"Source.Note \"t\" & n\r\n"
    L"End Sub\r\n";

}  // namespace

TEST_F(EventsTest, ReachTheProcedureOfPrefixAndName) {
    Run(kTickNotes + L"WScript.ConnectObject Source, \"s\"");

    Tick(5);

    EXPECT_EQ(notes, Notes({L"s5"}));
}

TEST_F(EventsTest, PrefixMayBringItsUnderscore) {
    Run(kTickNotes + L"WScript.ConnectObject Source, \"s_\"");

    Tick(6);

    EXPECT_EQ(notes, Notes({L"s6"}));
}

TEST_F(EventsTest, EventWithoutProcedureIsNoError) {
    EXPECT_EQ(Run(L"WScript.ConnectObject Source, \"nobody\"\r\nSource.FireTick 1"), 0);

    EXPECT_EQ(source->Connected(), 1u);
}

TEST_F(EventsTest, SecondConnectionOfAnObjectTakesTheFirstOnesPlace) {
    Run(kTickNotes + L"WScript.ConnectObject Source, \"s\"\r\nWScript.ConnectObject Source, \"t\"");

    Tick(7);

    EXPECT_EQ(notes, Notes({L"t7"}));
}

TEST_F(EventsTest, ConnectionStaysWhenTheObjectRefusesANewOne) {
    source->OnCall(L"RefuseFromNowOn", [this](Call&) { source->refusal = E_ACCESSDENIED; });
    Run(kTickNotes +
        L"WScript.ConnectObject Source, \"s\"\r\nSource.RefuseFromNowOn\r\nOn Error Resume Next\r\n"
        L"WScript.ConnectObject Source, \"t\"\r\nSource.Note Err.Number <> 0");

    Tick(7);

    EXPECT_EQ(notes, Notes({L"True", L"s7"}));
    EXPECT_EQ(source->Connected(), 1u);
}

TEST_F(EventsTest, ObjectWithRoomForOneConnectionMayBeConnectedAgain) {
    source->mostSinks = 1;
    Run(kTickNotes + L"WScript.ConnectObject Source, \"s\"\r\nWScript.ConnectObject Source, \"t\"");

    Tick(7);

    EXPECT_EQ(notes, Notes({L"t7"}));
    EXPECT_EQ(source->Connected(), 1u);
}

TEST_F(EventsTest, DisconnectedObjectIsHeardNoMore) {
    Run(kTickNotes + L"WScript.ConnectObject Source, \"s\"\r\nWScript.DisconnectObject Source");

    Tick(8);

    EXPECT_EQ(notes, Notes());
    EXPECT_EQ(source->Connected(), 0u);
}

TEST_F(EventsTest, ProcedureMayDisconnectItsOwnObject) {
    Run(L"Sub s_Tick(n)\r\nSource.Note n\r\nWScript.DisconnectObject Source\r\nSource.Note \"after\"\r\nEnd Sub\r\n"
        L"WScript.ConnectObject Source, \"s\"");

    Tick(1);
    Tick(2);

    EXPECT_EQ(notes, Notes({L"1", L"after"}));
}

TEST_F(EventsTest, EventInsideAnEventRunsAtOnce) {
    Run(L"Sub s_Tick(n)\r\nSource.Note \"in\" & n\r\nIf n < 3 Then Source.FireTick n + 1\r\nSource.Note \"out\" & n\r\n"
        L"End Sub\r\nWScript.ConnectObject Source, \"s\"");

    Tick(1);

    EXPECT_EQ(notes, Notes({L"in1", L"in2", L"in3", L"out3", L"out2", L"out1"}));
}

TEST_F(EventsTest, FunctionAnswersTheEvent) {
    Run(L"Function s_Ask()\r\ns_Ask = 42\r\nEnd Function\r\nWScript.ConnectObject Source, \"s\"");
    OwnedVariant answer;

    source->Fire(EventSourceObject::kAsk, {}, &answer);

    ASSERT_EQ(answer.vt, VT_I2);
    EXPECT_EQ(answer.iVal, 42);
}

class AssigningTest : public EventsTest {
protected:
    /// Asks with one reference; the procedure notes the value that it gets and assigns `expression`.
    void Ask(const std::wstring& expression, VARIANT reference) {
        Run(L"Sub s_Ask(v)\r\nSource.Note TypeName(v)\r\nv = " + expression +
            L"\r\nEnd Sub\r\nWScript.ConnectObject Source, \"s\"");
        source->Fire(EventSourceObject::kAsk, {reference});
    }
};

TEST_F(AssigningTest, Boolean) {
    VARIANT_BOOL value = VARIANT_FALSE;
    Ask(L"True", Reference(VT_BOOL, &value));
    EXPECT_EQ(value, VARIANT_TRUE);
    EXPECT_EQ(notes, Notes({L"Boolean"}));
}

TEST_F(AssigningTest, BooleanFromANumber) {
    VARIANT_BOOL value = VARIANT_FALSE;
    Ask(L"7", Reference(VT_BOOL, &value));
    EXPECT_EQ(value, VARIANT_TRUE);
}

TEST_F(AssigningTest, NumbersOfEverySize) {
    struct {
        BYTE before = 1, value = 1, after = 1;
    } byte;
    struct {
        SHORT before = 1, value = 1, after = 1;
    } integer;
    struct {
        LONG before = 1, value = 1, after = 1;
    } whole;
    Ask(L"200", Reference(VT_UI1, &byte.value));
    Ask(L"-3000", Reference(VT_I2, &integer.value));
    Ask(L"\"123456\"", Reference(VT_I4, &whole.value));
    EXPECT_EQ(byte.value, 200);
    EXPECT_EQ(integer.value, -3000);
    EXPECT_EQ(whole.value, 123456);
    EXPECT_TRUE(byte.before == 1 && byte.after == 1);
    EXPECT_TRUE(integer.before == 1 && integer.after == 1);
    EXPECT_TRUE(whole.before == 1 && whole.after == 1);
}

TEST_F(AssigningTest, Fractions) {
    float single = 0;
    double real = 0;
    DATE date = 0;
    CY currency = {};
    Ask(L"1.5", Reference(VT_R4, &single));
    Ask(L"2.25", Reference(VT_R8, &real));
    Ask(L"CDate(3.5)", Reference(VT_DATE, &date));
    Ask(L"4.25", Reference(VT_CY, &currency));
    EXPECT_EQ(single, 1.5f);
    EXPECT_EQ(real, 2.25);
    EXPECT_EQ(date, 3.5);
    EXPECT_EQ(currency.int64, 42500);
}

TEST_F(AssigningTest, Text) {
    Bstr value(L"before");
    Ask(L"v & \" and after\"", Reference(VT_BSTR, value.InOut()));
    EXPECT_STREQ(value.Get(), L"before and after");
}

TEST_F(AssigningTest, VariantTakesTheTypeOfTheAssignedValue) {
    OwnedVariant value;
    Ask(L"\"text\"", Reference(VT_VARIANT, &value));
    ASSERT_EQ(value.vt, VT_BSTR);
    EXPECT_STREQ(value.bstrVal, L"text");
    EXPECT_EQ(notes, Notes({L"Empty"}));
}

TEST_F(AssigningTest, ReferenceInsideAVariantReachesItsTarget) {
    VARIANT_BOOL value = VARIANT_FALSE;
    VARIANT inner = Reference(VT_BOOL, &value);
    Ask(L"True", Reference(VT_VARIANT, &inner));
    EXPECT_EQ(value, VARIANT_TRUE);
    EXPECT_EQ(inner.vt, VT_BYREF | VT_BOOL);
}

TEST_F(AssigningTest, ObjectIsReplacedAndItsReferenceGivenBack) {
    const auto first = MakeObject<EventSourceObject>();
    IDispatch* value = first.Get();
    value->AddRef();
    Run(L"Sub s_Ask(v)\r\nSet v = Source\r\nEnd Sub\r\nWScript.ConnectObject Source, \"s\"");

    source->Fire(EventSourceObject::kAsk, {Reference(VT_DISPATCH, &value)});

    EXPECT_EQ(value, static_cast<IDispatch*>(source.Get()));
    first->AddRef();
    EXPECT_EQ(first->Release(), 1u);
    value->Release();
}

TEST_F(AssigningTest, ArgumentByValueStaysWithTheSource) {
    Run(L"Sub s_Ask(v)\r\nv = 9\r\nSource.Note v\r\nEnd Sub\r\nWScript.ConnectObject Source, \"s\"");
    source->Fire(EventSourceObject::kAsk, {Number(4)});
    EXPECT_EQ(notes, Notes({L"9"}));
}

TEST_F(AssigningTest, SeveralArgumentsKeepTheirOrder) {
    LONG second = 0;
    LONG third = 0;
    Run(L"Sub s_Ask(a, b, c)\r\nb = a + 1\r\nc = a + 2\r\nEnd Sub\r\nWScript.ConnectObject Source, \"s\"");
    source->Fire(EventSourceObject::kAsk, {Number(10), Reference(VT_I4, &second), Reference(VT_I4, &third)});
    EXPECT_EQ(second, 11);
    EXPECT_EQ(third, 12);
}

TEST_F(JScriptEventsTest, ReachTheFunctionOfPrefixAndName) {
    Run(L"function s_Tick(n) { Source.Note(\"js\" + n); }\r\nWScript.ConnectObject(Source, \"s\");");

    Tick(5);

    EXPECT_EQ(notes, Notes({L"js5"}));
}

TEST_F(EventsTest, NothingOfTheScriptRunsAfterItIsClosed) {
    Run(kTickNotes + L"WScript.ConnectObject Source, \"s\"");
    source->firesToTheGone = true;
    source->onUnadvise = [this] { Tick(1); };

    host->Close();
    Tick(2);

    EXPECT_EQ(notes, Notes());
    EXPECT_EQ(source->Connected(), 0u);
}

TEST_F(EventsTest, ObjectsOfTheScriptAreReleasedWhenItIsClosed) {
    const int before = EventSourceObject::Living();
    source->OnCall(L"Another", [](Call& call) { call.ReturnObject(MakeObject<EventSourceObject>()); });
    Run(L"Dim kept\r\nSet kept = Source.Another()\r\nWScript.ConnectObject kept, \"k\"");
    ASSERT_EQ(EventSourceObject::Living(), before + 1);

    host->Close();

    EXPECT_EQ(EventSourceObject::Living(), before);
}

/// What ends the process: each runs in a process of its own.
using EventsDeathTest = EventsTest;

TEST_F(EventsDeathTest, QuitInAnEventEndsTheScriptAtOnceWithItsCode) {
    EXPECT_EXIT(
        Run(L"Sub s_Tick(n)\r\nOn Error Resume Next\r\nWScript.Quit 7\r\nWScript.StdErr.Write \"late\"\r\nEnd Sub\r\n"
            L"WScript.ConnectObject Source, \"s\"\r\nOn Error Resume Next\r\nSource.FireTick 1\r\n"
            L"WScript.StdErr.Write \"late\""),
        testing::ExitedWithCode(7), "^$");
}

TEST_F(EventsDeathTest, QuitDisconnectsAndReleasesWhatTheScriptHolds) {
    const auto tell = [](const char* what) {
        return [what] {
            std::fputs(what, stderr);
            std::fflush(stderr);
        };
    };
    source->onUnadvise = tell("unadvised ");
    source->OnCall(L"Another", [tell](Call& call) {
        const auto object = MakeObject<EventSourceObject>();
        object->onEnd = tell("released");
        call.ReturnObject(object);
    });
    EXPECT_EXIT(Run(L"Dim kept\r\nSub s_Tick(n)\r\nWScript.Quit 4\r\nEnd Sub\r\nSet kept = Source.Another()\r\n"
                    L"WScript.ConnectObject Source, \"s\"\r\nSource.FireTick 1"),
                testing::ExitedWithCode(4), "^unadvised released$");
}

namespace {

/// In place of a script engine's: it creates nothing.
class NoEngine final : public ComObject<IClassFactory> {
public:
    explicit NoEngine(HRESULT failure) : mFailure(failure) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, void** object) override {
        *object = nullptr;
        return mFailure;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    /// Every class object that the process registers is asked before the registry.
    void StandFor(const wchar_t* engine) {
        CLSID id = {};
        DWORD registered = 0;
        EXPECT_EQ(CLSIDFromProgID(engine, &id), S_OK);
        EXPECT_EQ(CoRegisterClassObject(id, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registered), S_OK);
    }

private:
    HRESULT mFailure;
};

}  // namespace

TEST_F(EventsDeathTest, EngineThatIsNotInstalledIsNamedWithWhatToDo) {
    const auto none = MakeObject<NoEngine>(REGDB_E_CLASSNOTREG);
    EXPECT_EXIT((none->StandFor(L"VBScript"), std::exit(Run(L"WScript.Echo 1"))), testing::ExitedWithCode(1),
                "0x80040154\\) kwohost: VBScript is not installed\\. Newer versions of Windows 11 have it in the "
                "settings, under System, Optional features\\. Or write the script in JScript\\.");
}

TEST_F(EventsDeathTest, EngineWithoutMemoryIsNotCalledMissing) {
    const auto none = MakeObject<NoEngine>(E_OUTOFMEMORY);
    const std::wstring why = SystemText(static_cast<DWORD>(E_OUTOFMEMORY));
    EXPECT_EXIT((none->StandFor(L"VBScript"), std::exit(Run(L"WScript.Echo 1"))), testing::ExitedWithCode(1),
                "kwohost: " + std::string(why.begin(), why.end()) + "\r?\n$");
}

TEST_F(EventsDeathTest, ErrorInACallbackOfATimerEndsTheSleepOfTheScript) {
    static ComPtr<IDispatch> kept;
    source->OnCall(L"Keep", [](Call& call) { kept = call.Object(0); });
    const TIMERPROC callBack = [](HWND, UINT, UINT_PTR, DWORD) CALLBACK {
        DISPPARAMS none = {};
        kept->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr);
    };
    EXPECT_EXIT((SetTimer(nullptr, 0, 20, callBack),
                 Run(L"Class Target\r\nPublic Default Sub Go\r\nErr.Raise 13, \"Callback\", \"Told\"\r\nEnd Sub\r\n"
                     L"End Class\r\nSource.Keep New Target\r\nWScript.Sleep 20000\r\nWScript.StdErr.Write \"late\"")),
                testing::ExitedWithCode(1), "^C:.events.vbs\\(3, \\d+\\): 13 \\(0x800A000D\\) Callback: Told\r?\n$");
}

TEST_F(EventsDeathTest, QuitInsideASleepOfAnEventOfASleep) {
    static EventSourceObject* firing = nullptr;
    firing = source.Get();
    const TIMERPROC fire = [](HWND, UINT, UINT_PTR, DWORD)
                               CALLBACK { firing->Fire(EventSourceObject::kTick, {Number(1)}); };
    EXPECT_EXIT(
        (SetTimer(nullptr, 0, 20, fire),
         Run(L"Dim depth\r\nSub s_Tick(n)\r\ndepth = depth + 1\r\nWScript.StdErr.Write \"<\" & depth & \">\"\r\n"
             L"If depth = 3 Then WScript.Quit 9\r\nWScript.Sleep 20000\r\nWScript.StdErr.Write \"late\"\r\n"
             L"End Sub\r\nWScript.ConnectObject Source, \"s\"\r\nWScript.Sleep 20000\r\n"
             L"WScript.StdErr.Write \"late\"")),
        testing::ExitedWithCode(9), "^<1><2><3>$");
}

TEST_F(EventsTest, ErrorOfAnEventReachesTheCodeThatWaits) {
    LetSourcePassErrorsOn();
    EXPECT_EQ(Run(L"Sub s_Tick(n)\r\nErr.Raise 77, \"Origin\", \"Told\"\r\nEnd Sub\r\n"
                  L"WScript.ConnectObject Source, \"s\"\r\nOn Error Resume Next\r\nSource.PassOn 1\r\n"
                  L"Source.Note Err.Number & \" \" & Err.Description"),
              0);

    EXPECT_EQ(notes, Notes({L"77 Origin says Told"}));
}

TEST_F(JScriptEventsTest, ErrorOfAnEventReachesTheCodeThatWaits) {
    LetSourcePassErrorsOn();
    EXPECT_EQ(Run(L"function s_Tick(n) { null.member(); }\r\nWScript.ConnectObject(Source, 's');\r\n"
                  L"try { Source.PassOn(1); } catch (e) { Source.Note(e.number & 0xFFFF); }"),
              0);

    EXPECT_EQ(notes, Notes({L"5007"}));
}

TEST_F(EventsTest, EventInsideAnEventMayHandleItsError) {
    LetSourcePassErrorsOn();
    EXPECT_EQ(Run(L"Sub s_Tick(n)\r\nIf n = 2 Then Err.Raise 77\r\nOn Error Resume Next\r\nSource.PassOn n + 1\r\n"
                  L"Source.Note n & \" \" & Err.Number\r\nEnd Sub\r\n"
                  L"WScript.ConnectObject Source, \"s\"\r\nSource.PassOn 1\r\nSource.Note \"on\""),
              0);

    EXPECT_EQ(notes, Notes({L"1 77", L"on"}));
}

namespace {

const std::wstring kFailingTick =
    L"Sub s_Tick(n)\r\nErr.Raise &H80047530, \"Origin\", \"Told\"\r\nEnd Sub\r\n"
    L"WScript.ConnectObject Source, \"s\"\r\n";
const std::string kReported = "C:.events.vbs\\(2, \\d+\\): -2147191504 \\(0x80047530\\) Origin: Told\r?\n";

}  // namespace

TEST_F(EventsDeathTest, ErrorThatNobodyHandlesIsReportedOnceWithItsPlace) {
    LetSourcePassErrorsOn();
    EXPECT_EXIT(std::exit(Run(kFailingTick + L"Source.PassOn 1\r\nWScript.StdErr.Write \"late\"")),
                testing::ExitedWithCode(1), "^" + kReported + "$");
}

TEST_F(EventsDeathTest, ErrorThatTheObjectKeepsToItselfIsReportedWhenTheCodeThatWaitedEnds) {
    EXPECT_EXIT(
        std::exit(Run(kFailingTick + L"On Error Resume Next\r\nSource.FireTick 1\r\nWScript.StdErr.Write \"on \"")),
        testing::ExitedWithCode(1), "^on " + kReported + "$");
}

TEST_F(EventsDeathTest, ErrorThatTheObjectKeepsToItselfIsReportedBeforeTheScriptWaits) {
    EXPECT_EXIT(
        std::exit(Run(kFailingTick +
                      L"On Error Resume Next\r\nSource.FireTick 1\r\nWScript.Sleep 1\r\nWScript.StdErr.Write \"on\"")),
        testing::ExitedWithCode(1), "^" + kReported + "on$");
}

TEST_F(EventsDeathTest, ErrorInAnEventThatNobodyWaitsForEndsTheScript) {
    static EventSourceObject* firing = nullptr;
    firing = source.Get();
    const TIMERPROC fire = [](HWND, UINT, UINT_PTR, DWORD)
                               CALLBACK { firing->Fire(EventSourceObject::kTick, {Number(1)}); };
    EXPECT_EXIT((SetTimer(nullptr, 0, 20, fire), Run(kFailingTick + L"On Error Resume Next\r\nWScript.Sleep 20000\r\n"
                                                                    L"WScript.StdErr.Write \"late\"")),
                testing::ExitedWithCode(1), "^" + kReported + "$");
}

TEST_F(EventsDeathTest, AssignedValueThatDoesNotConvertIsAnError) {
    static VARIANT_BOOL value = VARIANT_FALSE;
    source->OnCall(L"FireAsk", [this](Call&) { source->Fire(EventSourceObject::kAsk, {Reference(VT_BOOL, &value)}); });
    EXPECT_EXIT(std::exit(Run(L"Sub s_Ask(v)\r\nv = \"neither\"\r\nEnd Sub\r\nWScript.ConnectObject Source, \"s\"\r\n"
                              L"Source.FireAsk")),
                testing::ExitedWithCode(1), "^C:.events.vbs: -2147352571 \\(0x80020005\\) s_Ask: .*\r?\n$");
}

}  // namespace kwohost::tests
