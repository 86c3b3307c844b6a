#include "scenario.h"

namespace kwo::fault_tests {

namespace {

constexpr std::int32_t kLastError = 77;
constexpr Handle kOwner = 9;

struct FrameStage : Stage {
    FrameStage() {
        desktop.errors.internetResponse = u"what the server said";
        desktop.errors.networkError = {u"what the network said", u"the provider"};
        desktop.errors.modules[u"wininet.dll"] = {{12007, u"The name cannot be resolved.\r\n"}};
        desktop.windows.windows[kOwner] = {u"A Minimised Window"};
        desktop.files.AddFile(u"C:\\Folder\\file.txt");
        // A clock that goes on while nobody waits.
        desktop.clock.SetCounterFrequency({});
        desktop.clock.msPerReading = 1;
        component->error.KWO_SaveError({1234, u"Before", u"The first error", {}, 0}, {.source = u"Before"});
        component->platform.errors.SetLast(kLastError);
    }
    void OnAnOldSystem() {
        desktop.host.platform.platformId = 1;
        component->identity.KWO_IsWinNT();
    }
    std::string State() override {
        const platform::ComponentError& saved = component->error.Saved();
        return "last error " + std::to_string(component->platform.errors.Last()) + ", saved " +
               std::to_string(saved.number) + ' ' + Shown(TextView(saved.description));
    }
};

constexpr char kAsItWas[] = "last error 77, saved 1234 The first error";

/// The text of a system error: nothing if the system does not tell it. The last error stays in any case.
Scenario TextOfError(std::string name, std::int32_t code, std::vector<std::string> calls) {
    std::vector<Rule> rules;
    rules.reserve(calls.size());
    for (std::string& call : calls)
        rules.push_back({std::move(call), Answers("", kAsItWas), IsOutOfMemory(kAsItWas)});
    return {std::move(name),
            {},
            Fresh<FrameStage>(),
            On<FrameStage>([code](FrameStage& stage) {
                return Shown(TextView(Member([&] { return stage.component->error.KWO_SystemErrorText(code); })));
            }),
            std::move(rules),
            IsOutOfMemory(kAsItWas)};
}

/// A file is looked for: on an old system by another call.
Scenario FileLookedFor(std::string name, bool isOldSystem, std::string call) {
    return {std::move(name),
            {},
            Prepared<FrameStage>([isOldSystem](FrameStage& stage) {
                if (isOldSystem) stage.OnAnOldSystem();
                stage.component->identity.KWO_IsWinNT();
            }),
            On<FrameStage>([](FrameStage& stage) {
                std::int32_t attributes = 0;
                return Shown(Member([&] {
                    return stage.component->routines.KWO_PathExists(u"C:\\Folder\\file.txt", true, attributes, false);
                }));
            }),
            {{std::move(call),
              [](const Failure& failure, const Reference& reference) {
                  Outcome outcome = reference.clean;
                  outcome.answer = "Error -" + std::to_string(failure.code);
                  outcome.saved = outcome.state = kAnything;
                  return std::vector{outcome};
              }},
             {"FormatMessage", {}}}};
}

/// The same question, but with another title or another answer.
Expected AsksDifferently() {
    return [](const Failure&, const Reference& reference) {
        Outcome outcome = reference.clean;
        outcome.answer = outcome.boxes = outcome.state = kAnything;
        return std::vector{outcome};
    };
}

}  // namespace

std::vector<Scenario> FrameScenarios() {
    return {
        TextOfError("TheTextOfASystemErrorIsTold", 5, {"FormatMessage"}),
        TextOfError("TheTextOfAnInternetErrorIsTold", 12007, {"GetModuleHandle", "FormatMessage"}),
        TextOfError("TheResponseOfAServerIsTold", 12003, {"InternetGetLastResponseInfo"}),
        TextOfError("TheTextOfANetworkErrorIsTold", 1208, {"WNetGetLastError"}),
        {"AnErrorIsSaved",
         {},
         Fresh<FrameStage>(),
         On<FrameStage>([](FrameStage& stage) {
             const Text help = u"a file of help texts.chm";
             Member([&] {
                 stage.component->error.KWO_SaveError({380, u"Host", u"A longer text of the second error", help, 7},
                                                      {.source = u"KWOTimer.AddAlarm", .replace = true});
             });
             return "saved";
         }),
         {},
         IsOutOfMemory(kAsItWas)},
        {"AnErrorIsAttached",
         {},
         Fresh<FrameStage>(),
         On<FrameStage>([](FrameStage& stage) {
             Member([&] {
                 stage.component->error.KWO_SaveError({380, u"Host", u"A longer text of the second error", {}, 0},
                                                      {.source = u"KWOTimer.AddAlarm"});
             });
             return "attached";
         }),
         {},
         IsOutOfMemory(kAsItWas)},
        FileLookedFor("AFileIsLookedFor", false, "GetFileAttributes"),
        FileLookedFor("AFileIsLookedForOnAnOldSystem", true, "GetFileAttributesAnsi"),
        {"ALocalTimeIsMadeUniversal",
         {},
         Fresh<FrameStage>(),
         On<FrameStage>([](FrameStage& stage) {
             return std::to_string(
                 Member([&] { return stage.component->locale.KWO_DateToFILETIME({46343.5}, true); }).scaled);
         }),
         {{"LocalFileTimeToFileTime",
           [](const Failure&, const Reference& reference) {
               return std::vector{Outcome{"", "-87 MKWOLocale.KWO_DateToFILETIME: Unknown error.",
                                          reference.clean.saved, "", kAnything}};
           }},
          {"FormatMessage", {}}}},
        {"AWaitEndsOnAnOldSystem",
         {},
         Prepared<FrameStage>([](FrameStage& stage) { stage.OnAnOldSystem(); }),
         On<FrameStage>([](FrameStage& stage) {
             return Shown(Member([&] { return stage.component->wait.KWO_Wait(100, true); }));
         }),
         {{"*", SameAnswer()}}},
        {"TheUserIsToldWithoutANetwork",
         {},
         Fresh<FrameStage>(),
         On<FrameStage>([](FrameStage& stage) {
             stage.desktop.FailCall("WNetGetUser", 1, 1222);
             frame::HostIdentity identity(stage.desktop.host);
             return Shown(TextView(Member([&]() -> const Text& { return identity.KWO_UserName(); })));
         }),
         {{"GetUserName", Answers("")}}},
        {"AMinimisedWindowAsks",
         {},
         Fresh<FrameStage>(),
         On<FrameStage>([](FrameStage& stage) {
             stage.desktop.windows.windows[kOwner].minimised = true;
             // The user restores the window while it flashes.
             stage.desktop.PostAt(800, [&stage] { stage.desktop.windows.windows[kOwner].minimised = false; });
             return std::to_string(Member([&] {
                 return stage.component->messageBoxes.KWOMsgBox({.prompt = u"a question", .ownerWindow = kOwner});
             }));
         }),
         {{"GetWindowText", AsksDifferently()}, {"MessageBox", AsksDifferently()}, {"*", SameAnswer()}}},
    };
}

}  // namespace kwo::fault_tests
