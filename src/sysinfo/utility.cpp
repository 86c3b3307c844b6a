#include "sysinfo/utility.h"

#include <algorithm>
#include <string>

#include "platform/clock.h"
#include "platform/component_error.h"
#include "platform/conversions.h"
#include "platform/file_system.h"
#include "platform/host_errors.h"
#include "platform/message_loop.h"
#include "platform/programs.h"
#include "platform/whole_numbers.h"

namespace kwo::sysinfo {

namespace {

using platform::ComponentError;
using platform::Null;
using platform::Try;
using platform::Variant;

constexpr std::int32_t kCannotStart = 1930;

Text WithSlash(TextView directory) {
    Text text(directory);
    if (text.empty() || text.back() != u'\\') text += u'\\';
    return text;
}

/// `seconds` must be positive.
std::int16_t MillisecondsOf(std::int16_t seconds) {
    // Intended: a number from 100 on is milliseconds; a smaller one is multiplied by 1000 in 16 bits.
    constexpr std::int16_t kFirstMilliseconds = 100;
    if (seconds >= kFirstMilliseconds) return seconds;
    return platform::Narrowed<std::int16_t>(std::int32_t{seconds} * 1000);
}

}  // namespace

KWOUtility::KWOUtility(component::Component& component) : mComponent(component) {
    mComponent.SetProgramName();
}

Text KWOUtility::KWO_FindInPath(TextView fileName) {
    // No file can have such a name, but the system would look for the part before the zero character.
    if (fileName.find(u'\0') != TextView::npos) return {};
    platform::FileSystem& files = mComponent.platform.files;
    if (Text beside = WithSlash(mComponent.platform.host.LibraryFolder()).append(fileName); files.ListsFile(beside)) {
        return beside;
    }
    const Text path = mComponent.platform.host.EnvironmentVariable(u"PATH");
    for (TextView left = path; !left.empty();) {
        const std::size_t end = std::min(left.find(u';'), left.size());
        Text candidate = WithSlash(left.substr(0, end)).append(fileName);
        if (files.ListsFile(candidate)) return candidate;
        left.remove_prefix(std::min(end + 1, left.size()));
    }
    return {};
}

Text KWOUtility::KWO_SystemDir(Variant& slashAtEnd) {
    return Directory(&platform::HostApplication::SystemDirectory, slashAtEnd);
}

Text KWOUtility::KWO_WindowsDir(Variant& slashAtEnd) {
    return Directory(&platform::HostApplication::WindowsDirectory, slashAtEnd);
}

Text KWOUtility::Directory(DirectoryQuery query, Variant& slashAtEnd) {
    if (platform::IsMissing(slashAtEnd)) slashAtEnd = false;
    platform::Conversions& conversions = mComponent.platform.conversions;
    constexpr std::uint32_t kUsualSize = 260;
    std::string buffer;
    std::uint32_t length = kUsualSize;
    do {
        buffer.assign(length, ' ');
        length = (mComponent.platform.host.*query)(buffer);
        if (length == 0) return {};
    } while (length > buffer.size());
    Text directory = conversions.FromAnsi(std::string_view(buffer).substr(0, length));
    // Intended: appended even to a root directory, which then ends in two backslashes.
    if (!std::holds_alternative<Null>(slashAtEnd) && conversions.ToBoolean(slashAtEnd)) directory += u'\\';
    return directory;
}

bool KWOUtility::KWO_IsWin32() {
    // Intended: true on the family that is not NT, despite the name.
    constexpr std::uint32_t kWindows95Family = 1;
    return Version().platformId == kWindows95Family;
}

bool KWOUtility::KWO_IsWinNT() {
    constexpr std::uint32_t kNtFamily = 2;
    return Version().platformId == kNtFamily;
}

std::int16_t KWOUtility::KWO_WinMajorVersion() {
    return platform::Narrowed<std::int16_t>(Version().majorVersion);
}

std::int16_t KWOUtility::KWO_WinMinorVersion() {
    return platform::Narrowed<std::int16_t>(Version().minorVersion);
}

const platform::HostApplication::Platform& KWOUtility::Version() {
    constexpr std::uint32_t kOldest = 3;
    constexpr std::int16_t kStopIcon = 16;
    if (mVersion.majorVersion < kOldest && !mComponent.platform.host.QueryPlatform(mVersion)) {
        mComponent.error.KWO_AppError({}, u"GetVersionEx failed.", kStopIcon, true, true);
    }
    return mVersion;
}

void KWOUtility::KWO_Pause(std::int16_t seconds) {
    if (seconds <= 0) return;
    platform::Clock& clock = mComponent.platform.clock;
    const std::int16_t delay = MillisecondsOf(seconds);
    // Intended: tick counts are signed. If they turn negative during a wait, it lasts until they come round again.
    const auto ticks = [&clock] { return static_cast<std::int32_t>(clock.TickCount()); };
    const auto end = platform::Narrowed<std::int32_t>(std::int64_t{ticks()} + delay);
    while (ticks() < end && mComponent.platform.messages.ProcessPending()) {
    }
}

std::int32_t KWOUtility::KWO_LoadApp(TextView appPath, TextView appProg, TextView appParms, std::int16_t winMode,
                                     TextView appName) {
    if (!appName.empty()) {
        // Intended: 1 for an activated window, the identifier of the task for a started program.
        constexpr std::int32_t kActivated = 1;
        const bool activated = Activates(appName);
        mComponent.platform.messages.ProcessPending();
        if (activated) return kActivated;
    }
    const Text commandLine = Text(appPath).append(appProg).append(1, u' ').append(appParms);
    const std::int32_t task = Start(commandLine, winMode);
    if (task == 0) TellFailedStart(appPath, appProg);
    return task;
}

bool KWOUtility::Activates(TextView title) {
    try {
        mComponent.platform.programs.Activate(title);
        return true;
    } catch (const ComponentError&) {
        return false;
    }
}

std::int32_t KWOUtility::Start(TextView commandLine, std::int16_t winMode) {
    try {
        return mComponent.platform.programs.Start(commandLine, winMode);
    } catch (const ComponentError&) {
        return 0;
    }
}

void KWOUtility::TellFailedStart(TextView appPath, TextView appProg) {
    constexpr std::int32_t kExclamation = 48;
    // Without a message table the box shows the text for undefined messages.
    Try([&] { mComponent.messages.KWOInitialize(); });
    const Variant values[] = {Text(appPath), Text(appProg)};
    const Text prompt = mComponent.messages.KWO_GetMsg(kCannotStart, values);
    mComponent.messageBoxes.KWOMsgBox({.prompt = prompt, .buttons = kExclamation});
}

}  // namespace kwo::sysinfo
