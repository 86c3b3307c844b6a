#include "contract_test.h"
#include "platform/simulated/simulated_desktop.h"

namespace kwo::contract {
namespace {

constexpr Handle kCurrentUser = static_cast<Handle>(0x80000001u);

class SimulatedScriptedObject final : public ScriptedObject {
public:
    explicit SimulatedScriptedObject(std::shared_ptr<platform::simulated::SimulatedObject> object)
        : mObject(std::move(object)) {}

    platform::HostObjectRef Reference() override { return mObject; }
    void SetProperty(TextView name, platform::Variant value) override { mObject->SetProperty(name, std::move(value)); }
    platform::Variant Property(TextView name) override { return mObject->Property(name).value(); }
    void SetMethod(TextView name, Method method, std::vector<Text> parameters) override {
        mObject->SetMethod(name, std::move(method), std::move(parameters));
    }
    void FailMember(TextView name, platform::ComponentError error) override {
        mObject->FailMember(name, std::move(error));
    }
    /// Parameters have no types here.
    void TakeOnly(ParameterTypes) override {}

private:
    std::shared_ptr<platform::simulated::SimulatedObject> mObject;
};

constexpr const char* kPropertyNames[] = {"Role",         "State", "Name", "Value", "Description", "KeyboardShortcut",
                                          "DefaultAction"};

class SimulatedUnderTest final : public PlatformUnderTest {
public:
    SimulatedUnderTest() {
        mDesktop.files.AddFile(ExistingFile());
        mDesktop.files.AddFolder(mDesktop.host.libraryFolder);
        const platform::FontRecord font = {-11, 400, 0, 0, 0, u"Tahoma"};
        mDesktop.fonts.nonClient = {font, font, font, font, font};
        mDesktop.metrics.values = {{0, 1'024}, {1, 768}, {16, 1'024}, {17, 749}};
    }

    platform::Platform& Services() override { return mServices; }
    void Post(std::function<void()> action) override { mDesktop.Post(std::move(action)); }
    void RequestQuit() override { mDesktop.messages.RequestQuit(); }
    bool TakeQuitRequest() override { return mDesktop.messages.QuitRequested(); }
    Handle MakeWindow(TextView title) override {
        mDesktop.windows.windows[++mLastWindow] = {Text(title)};
        mDesktop.drawing.clientAreas[mLastWindow] = {0, 0, 190, 80};
        mDesktop.screenDrawing.origins[mLastWindow] = {15, 30};
        return mLastWindow;
    }
    void SetEnvironmentVariable(TextView name, TextView value) override {
        mDesktop.host.environment[Text(name)] = Text(value);
    }
    void Minimise(Handle window) override { mDesktop.windows.windows.at(window).minimised = true; }
    void PressMouse(Handle) override { MoveMouseButton(true); }
    void ReleaseMouse() override { MoveMouseButton(false); }
    void RecreateTaskbar() override { mDesktop.notificationArea.RecreateTaskbar(); }
    std::size_t TopLevelWindows() override {
        return mDesktop.windows.windows.size() + (mDesktop.notificationArea.listeners.empty() ? 0 : 1);
    }
    void InstallAnnotations() override { mDesktop.accessibility.Install(); }
    std::vector<std::string> WhatReadersRead(Handle window) override {
        std::vector<std::string> read;
        const auto found = mDesktop.accessibility.annotations.find(window);
        if (found == mDesktop.accessibility.annotations.end()) return read;
        for (const auto& [property, value] : found->second)
            read.push_back(kPropertyNames[static_cast<std::size_t>(property)] + (' ' + value));
        return read;
    }
    void Hide(Handle window) override { mDesktop.windows.windows.at(window).hidden = true; }
    void ListenToKeys() override { mDesktop.log.Clear(); }
    void HoldControl(bool) override {}  // nobody looks at it
    std::vector<std::string> KeysHeard(std::size_t) override {
        std::vector<std::string> heard;
        for (const std::string& line : mDesktop.log.Starting("Keys "))
            heard.push_back(line == "Keys {TAB}" ? "Tab" : line == "Keys +{TAB}" ? "Shift+Tab" : line);
        return heard;
    }
    void AnswerNextBox(std::int32_t button) override { mDesktop.windows.answers.push_back(button); }
    Text InstalledClass() override {
        mDesktop.components.Install(u"Test.Counter", [this] {
            auto counter = mDesktop.MakeObject();
            counter->SetProperty(u"Count", std::int32_t{0});
            return counter;
        });
        return u"Test.Counter";
    }
    std::unique_ptr<ScriptedObject> MakeObject(TextView typeName) override {
        return std::make_unique<SimulatedScriptedObject>(mDesktop.MakeObject(Text(typeName)));
    }
    LoadedPicture MakeIcon() override { return {MakePicture(platform::Pictures::kIcon, 0x10'0037), 0x10'0037}; }
    platform::HostObjectRef MakeEmptyPicture() override { return MakePicture(0, 0); }
    Text ExistingFile() override { return u"C:\\Program Files\\Host\\HOSTAPP.EXE"; }
    Text EmptyFolder() override {
        mDesktop.files.AddFolder(u"C:\\Logs");
        return u"C:\\Logs";
    }
    void MakeFolder(TextView path) override { mDesktop.files.AddFolder(path); }
    Text FolderThatTakesNoFile() override {
        mDesktop.FailCall("CreateFile", 1, 5);
        return EmptyFolder();
    }
    std::optional<std::string> ContentOf(TextView path) override {
        const std::string* const content = mDesktop.logFiles.Content(path);
        return content == nullptr ? std::nullopt : std::optional(*content);
    }
    void ListenToDebugOutput() override { mDesktop.debugOutput.lines.clear(); }
    std::vector<std::string> DebugOutputHeard() override {
        std::vector<std::string> heard;
        for (const Text& line : mDesktop.debugOutput.lines)
            heard.push_back(mDesktop.conversions.ToAnsi(line));
        return heard;
    }
    HostProgram Host() override { return {mDesktop.host.productName, mDesktop.host.version}; }
    void ListenToHostLog() override { mDesktop.log.Clear(); }
    std::vector<std::string> HostLogHeard() override {
        constexpr std::string_view kBegin = "HostLog ";
        std::vector<std::string> heard;
        for (const std::string& line : mDesktop.log.Starting(kBegin))
            heard.push_back(line.substr(kBegin.size()));
        return heard;
    }
    platform::Point NextLineBegins(Handle context) override { return mDesktop.screenDrawing.Place(context); }
    void PutValue(TextView path, TextView name, std::uint32_t type, const std::string& bytes) override {
        mDesktop.registry.PutValue(kCurrentUser, path, name, type, bytes);
    }
    void RemoveKeyTree(TextView) override {}

private:
    platform::HostObjectRef MakePicture(std::int32_t type, Handle handle) {
        const auto picture = mDesktop.MakeObject(u"Picture");
        picture->SetProperty(u"Type", type);
        picture->SetProperty(u"Handle", handle);
        return picture;
    }
    void MoveMouseButton(bool down) {
        mDesktop.mouse.isHeld = down;
        mDesktop.Post([this, down] { mDesktop.mouse.wasPressed = down; });
    }

    platform::simulated::SimulatedDesktop mDesktop;
    platform::Platform mServices = mDesktop.Services();
    Handle mLastWindow = 0x10000;
};

}  // namespace

std::unique_ptr<PlatformUnderTest> MakePlatform() {
    return std::make_unique<SimulatedUnderTest>();
}

}  // namespace kwo::contract
