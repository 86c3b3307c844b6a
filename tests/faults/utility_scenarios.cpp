#include "scenario.h"
#include "sysinfo/utility.h"

namespace kwo::fault_tests {

namespace {

using sysinfo::KWOUtility;

constexpr std::int32_t kRefused = 5;
constexpr char kBox[] = "Ask owner=0 style=0x10030 title=Host Application prompt=";

struct UtilityStage : Stage {
    UtilityStage() {
        desktop.host.environment[u"PATH"] = u"C:\\First Folder;C:\\Second Folder";
        desktop.files.AddFile(u"C:\\First Folder\\tool.exe");
        desktop.files.AddFile(u"C:\\Second Folder\\tool.exe");
        desktop.programs.installed.insert(u"C:\\Tools\\tool.exe");
        desktop.windows.windows[9] = {u"A Running Program"};
        InstallCompanion(*this);
        object.emplace(*component);
    }
    void Release() override { object.reset(); }
    void InDevelopment() {
        desktop.host.moduleFileName = u"C:\\Tools\\KWODEV.EXE";
        component->identity.KWO_IsCompiled();
    }
    std::string Start(TextView program, TextView title) {
        const std::int32_t task =
            Member([&] { return object->KWO_LoadApp(u"C:\\Tools\\", program, u"/quiet", 1, title); });
        return task > 1 ? "a task" : std::to_string(task);
    }

    std::optional<KWOUtility> object;
};

Scenario Folder(std::string name, std::string member, Text (KWOUtility::*ask)(Variant&)) {
    return {std::move(name),
            {std::move(member)},
            Prepared<UtilityStage>([](UtilityStage& stage) {
                // More than fits at once.
                stage.desktop.host.systemDirectory = "C:\\" + std::string(300, 's');
                stage.desktop.host.windowsDirectory = "C:\\" + std::string(300, 'w');
            }),
            On<UtilityStage>([ask](UtilityStage& stage) {
                Variant slash = true;
                return Shown(TextView(Member([&] { return ((*stage.object).*ask)(slash); })));
            }),
            {{"GetSystemDirectory", Answers("")},
             {"GetWindowsDirectory", Answers("")},
             {"MultiByteToWideChar", {}},
             {"VariantChangeType", Raises()}}};
}

/// 0, and a box says so. Its text is that of an undefined message if the messages cannot be loaded.
Expected IsTold(bool isLoaded) {
    return [isLoaded](const Failure&, const Reference& reference) {
        Outcome outcome = {"0", "", reference.clean.saved, kBox, ""};
        outcome.boxes += isLoaded ? "a text with C:\\Tools\\ and tool.exe in it; " : "Undefined Message; ";
        return std::vector{outcome};
    };
}

/// A start that fails, and the message about it.
std::vector<Rule> StartRules() {
    return {
        {"EnumWindows", Answers("a task")},
        {"CreateProcess", IsTold(true)},
        {"GetTimeZoneInformation", IsTold(true)},
        {"GetLocaleInfo", IsTold(true)},
        {"GetModuleFileName", IsTold(true)},
        {"GetFileVersionInfo", {}},
        {"CoCreateInstance", IsTold(false)},
        {"Companion.*", IsTold(false)},
        // The answers of the companion, and the values for the text.
        {"VariantChangeType", Either(IsTold(false), Raises())},
        {"IsWindow", IsTold(true)},
        {"MessageBox", IsTold(true)},
    };
}

/// The next object loads the messages again.
void CreateAgain(UtilityStage& stage) {
    stage.object.emplace(*stage.component);
}

std::string Version(UtilityStage& stage) {
    std::string told = Shown(Member([&] { return stage.object->KWO_IsWinNT(); }));
    told += ' ' + Shown(Member([&] { return stage.object->KWO_IsWin32(); }));
    told += ' ' + std::to_string(Member([&] { return stage.object->KWO_WinMajorVersion(); }));
    return told + ' ' + std::to_string(Member([&] { return stage.object->KWO_WinMinorVersion(); }));
}

}  // namespace

std::vector<Scenario> UtilityScenarios() {
    const std::vector<std::string> versionMembers = {"KWOUtility.get KWO_IsWin32", "KWOUtility.get KWO_IsWinNT",
                                                     "KWOUtility.get KWO_WinMajorVersion",
                                                     "KWOUtility.get KWO_WinMinorVersion"};
    return {
        {"AFileIsFoundInThePath",
         {"KWOUtility.KWO_FindInPath"},
         Fresh<UtilityStage>(),
         On<UtilityStage>([](UtilityStage& stage) {
             return Shown(TextView(Member([&] { return stage.object->KWO_FindInPath(u"tool.exe"); })));
         }),
         {{"GetFileVersionInfo", {}},
          {"GetEnvironmentVariable", {}},
          {"FindFirstFile", Either(Unnoticed(), Either(Answers("C:\\Second Folder\\tool.exe"), Answers("")))}}},
        Folder("TheSystemFolderIsTold", "KWOUtility.KWO_SystemDir", &KWOUtility::KWO_SystemDir),
        Folder("TheWindowsFolderIsTold", "KWOUtility.KWO_WindowsDir", &KWOUtility::KWO_WindowsDir),
        {"TheVersionIsTold",
         versionMembers,
         Fresh<UtilityStage>(),
         On<UtilityStage>(Version),
         // The first member is refused, the next one asks again.
         {{"GetVersionEx", Either(Answers("False False 10 0"), Answers("False False 0 0"))},
          {"GetModuleFileName", Unnoticed()}}},
        {"AVersionThatIsNotToldIsShownToADeveloper",
         {"KWOUtility.get KWO_IsWinNT"},
         Prepared<UtilityStage>([](UtilityStage& stage) { stage.InDevelopment(); }),
         On<UtilityStage>([](UtilityStage& stage) {
             stage.desktop.FailCall("GetVersionEx", 1, kRefused);
             return Shown(Member([&] { return stage.object->KWO_IsWinNT(); }));
         }),
         {{"IsWindow", Unnoticed()}, {"MessageBox", Unnoticed()}, {"GetFileVersionInfo", {}}}},
        {"APauseEnds",
         {"KWOUtility.KWO_Pause"},
         Prepared<UtilityStage>([](UtilityStage& stage) { stage.desktop.clock.msPerReading = 50; }),
         On<UtilityStage>([](UtilityStage& stage) {
             Member([&] { stage.object->KWO_Pause(300); });
             return "";
         }),
         {}},
        {"ARunningProgramIsActivated",
         {"KWOUtility.KWO_LoadApp"},
         Fresh<UtilityStage>(),
         On<UtilityStage>([](UtilityStage& stage) { return stage.Start(u"tool.exe", u"A Running Program"); }),
         StartRules(),
         IsOutOfMemory(),
         By<UtilityStage>(CreateAgain)},
        {"AProgramIsStarted",
         {"KWOUtility.KWO_LoadApp"},
         Fresh<UtilityStage>(),
         On<UtilityStage>([](UtilityStage& stage) { return stage.Start(u"tool.exe", u""); }),
         StartRules(),
         IsOutOfMemory(),
         By<UtilityStage>(CreateAgain)},
        {"AFailedStartIsTold",
         {"KWOUtility.KWO_LoadApp"},
         Fresh<UtilityStage>(),
         On<UtilityStage>([](UtilityStage& stage) {
             stage.desktop.programs.installed.clear();
             return stage.Start(u"tool.exe", u"");
         }),
         StartRules(),
         IsOutOfMemory(),
         By<UtilityStage>(CreateAgain)},
        {"AFailedStartIsLoggedWhereNobodySeesABox",
         {"KWOUtility.KWO_LoadApp"},
         Prepared<UtilityStage>([](UtilityStage& stage) {
             stage.desktop.programs.installed.clear();
             stage.component->messageBoxes.SetUnattended(true);
         }),
         On<UtilityStage>([](UtilityStage& stage) { return stage.Start(u"tool.exe", u""); }),
         {{"VariantChangeType", Either(Unnoticed(), Raises())}, {"*", Unnoticed()}},
         IsOutOfMemory(),
         By<UtilityStage>(CreateAgain)},
        {"AUtilityObjectIsCreated",
         {},
         Fresh<UtilityStage>(),
         On<UtilityStage>([](UtilityStage& stage) {
             Member([&] { stage.object.emplace(*stage.component); });
             return "created";
         }),
         {}},
    };
}

}  // namespace kwo::fault_tests
