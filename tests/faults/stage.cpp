#include "stage.h"

#include <algorithm>

namespace kwo::fault_tests {

namespace {

/// The properties by which objects of a host hold each other.
constexpr TextView kLinks[] = {u"Parent", u"Font", u"Container", u"ActiveControl"};

/// The messages that the component asks for.
constexpr std::int32_t kFirst = 1899;
constexpr std::int32_t kLast = 1935;

}  // namespace

Stage::Stage() {
    desktop.screen.pointer = kPointer;
    component.emplace(desktop.Services());
}

std::shared_ptr<SimulatedObject> Stage::Make(TextView type, std::string label) {
    auto made = desktop.MakeObject(Text(type), std::move(label));
    mObjects.push_back(made);
    return made;
}

std::string Stage::EndAndLookWhatIsLeft() {
    Release();
    component.reset();
    for (auto& font : desktop.fonts.made)
        mObjects.push_back(font);
    desktop.fonts.made.clear();
    for (const auto& made : mObjects) {
        const auto object = made.lock();
        if (object == nullptr) continue;
        for (const TextView link : kLinks) {
            if (object->Property(link)) object->SetProperty(link, platform::Empty{});
        }
    }
    const auto held = std::ranges::count_if(mObjects, [](const auto& made) { return !made.expired(); });
    return LeftOnDesktop() + (held == 0 ? "" : std::to_string(held) + " objects of the host are held; ");
}

std::string Stage::LeftOnDesktop() const {
    const auto& faults = desktop.faults;
    const auto failed = [&](std::string_view call) {
        return std::ranges::count(faults.Failed(), call, &platform::simulated::Faults::Failure::call);
    };
    std::string left;
    const auto count = [&left](const char* what, auto number, auto allowed) {
        if (static_cast<std::int64_t>(number) > static_cast<std::int64_t>(allowed)) {
            left += std::to_string(number) + " " + what + "; ";
        }
    };
    // What the desktop refuses to take back stays there.
    count("open keys", desktop.registry.OpenKeys(), failed("RegCloseKey"));
    count("event sources", desktop.eventLog.OpenSources(), failed("DeregisterEventSource"));
    count("icons", desktop.notificationArea.icons.size(), failed("Shell_NotifyIcon"));
    count("annotated windows", desktop.accessibility.annotations.size(), failed("ClearHwndProps"));
    count("taskbar listeners", desktop.notificationArea.listeners.size(), 0);
    count("open files", desktop.logFiles.OpenFiles(), 0);
    count("open processes", desktop.processMemory.OpenHandles(), 0);
    count("screen contexts", desktop.screenDrawing.openContexts, 0);
    count("pens", desktop.screenDrawing.livePens, 0);
    count("timers", desktop.timers.Running(), 0);
    if (desktop.screen.pointer != kPointer) left += "the pointer is changed; ";
    return left;
}

void InstallCompanion(Stage& stage) {
    stage.desktop.components.Install(u"KWOInit.KWOInitialize", [&stage] {
        const auto companion = stage.Make(u"Companion", "companion");
        companion->SetMethod(u"KWO_MsgTableSize",
                             [](std::span<Variant> given) -> Variant {
                                 given[2] = kFirst;
                                 given[3] = kLast;
                                 return true;
                             },
                             {u"ProgramName", u"MsgFilePath", u"IdxArrayStart", u"IdxArrayEnd", u"TextArraySize"});
        companion->SetMethod(u"KWO_MsgTableLoad",
                             [](std::span<Variant> given) -> Variant {
                                 const auto texts = std::make_shared<platform::TextArray>();
                                 texts->lowerBound = kFirst;
                                 texts->items.resize(kLast - kFirst + 1, u"a text with %1 and %2 in it");
                                 given[2] = platform::ForeignRef(texts);
                                 return platform::Empty{};
                             },
                             {u"Language", u"IdxArray", u"TextArray"});
        return HostObjectRef(companion);
    });
}

}  // namespace kwo::fault_tests
