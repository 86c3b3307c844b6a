#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/component_error.h"
#include "platform/platform.h"
#include "platform/variant.h"
#include "support/raised.h"

#define SERVICE_HEADER(name) <platform/name.h>
#include "platform/service_headers.def"
#undef SERVICE_HEADER

namespace kwo::contract {

using platform::Handle;
using platform::Text;
using platform::TextView;
using test_support::RaisedNumber;

/// Codes of the system's errors.
constexpr std::int32_t kInvalidHandle = 6;
/// Every kind of input, for waits.
constexpr std::uint32_t kAnyInput = 0xFF;

/// The types that the procedures of an object give to their parameters.
enum class ParameterTypes { AsGiven, Longs, Variants };

/// An object of the host whose members a test writes: the far side of a HostObject.
class ScriptedObject {
public:
    /// What it changes in its arguments reaches a caller who passed them by reference.
    using Method = std::function<platform::Variant(std::span<platform::Variant>)>;

    virtual ~ScriptedObject() = default;

    /// The object as the logic sees it. Each reference holds the object, and so does this.
    virtual platform::HostObjectRef Reference() = 0;
    virtual void SetProperty(TextView name, platform::Variant value) = 0;
    virtual platform::Variant Property(TextView name) = 0;
    /// With named arguments the method gets as many as `parameters` has, Missing where the caller gave none.
    virtual void SetMethod(TextView name, Method method, std::vector<Text> parameters = {}) = 0;
    /// From now on every use of the member raises `error`.
    virtual void FailMember(TextView name, platform::ComponentError error) = 0;
    /// From now on the object refuses arguments of other types, where the host tells types of parameters apart.
    virtual void TakeOnly(ParameterTypes types) = 0;
};

/// A picture that the host has loaded.
struct LoadedPicture {
    platform::HostObjectRef object;
    Handle handle;
};

/// What a program says of itself.
struct HostProgram {
    Text productName;
    platform::HostApplication::Version version;
};

/// A platform, and what only somebody outside of it can bring about: the user, other programs, the host.
class PlatformUnderTest {
public:
    virtual ~PlatformUnderTest() = default;

    virtual platform::Platform& Services() = 0;
    /// True if Wine is used in place of Windows.
    virtual bool IsWine() const { return false; }
    /// True if the user has the language, the formats and the code page of the United States.
    virtual bool HasAmericanFormats() const { return true; }

    /// Puts an action into the thread's message queue.
    virtual void Post(std::function<void()> action) = 0;
    virtual void RequestQuit() = 0;
    /// Whether a request to quit is in the queue; takes it out.
    virtual bool TakeQuitRequest() = 0;

    /// A window that goes with the platform.
    virtual Handle MakeWindow(TextView title) = 0;
    virtual void Minimise(Handle window) = 0;
    /// The user presses the mouse's left button over the window, which was made here.
    virtual void PressMouse(Handle window) = 0;
    virtual void ReleaseMouse() = 0;
    virtual void Hide(Handle window) = 0;
    /// The shell is started again: the taskbar it makes has no icons yet.
    virtual void RecreateTaskbar() = 0;
    /// The windows of this thread that receive what the shell sends to all programs.
    virtual std::size_t TopLevelWindows() = 0;
    /// From now on a window of this program has the focus and hears the keys.
    virtual void ListenToKeys() = 0;
    /// The user holds the Ctrl key from now on, or no longer.
    virtual void HoldControl(bool hold) = 0;
    /// The keys heard, the first one first: "Tab", "Shift+Tab", "Ctrl+Tab", and "held " before one that was not
    /// released since the last time. Waits until there are at least `count`.
    virtual std::vector<std::string> KeysHeard(std::size_t count) = 0;
    /// From now on there is an annotation service. It refuses windows that do not exist.
    virtual void InstallAnnotations() = 0;
    /// What a screen reader would read of the window: "Role 43", "Name \"Save\"", in the order of the properties.
    virtual std::vector<std::string> WhatReadersRead(Handle window) = 0;
    /// The user presses `button` in the next box.
    virtual void AnswerNextBox(std::int32_t button) = 0;

    /// In the environment of this process.
    virtual void SetEnvironmentVariable(TextView name, TextView value) = 0;

    /// The programmatic identifier of a class whose new objects have the `Count` 0.
    virtual Text InstalledClass() = 0;

    /// An object of the host without members. Without a name it has no type information.
    virtual std::unique_ptr<ScriptedObject> MakeObject(TextView typeName = {}) = 0;
    /// An icon that the host has loaded.
    virtual LoadedPicture MakeIcon() = 0;
    /// A picture object that has loaded nothing.
    virtual platform::HostObjectRef MakeEmptyPicture() = 0;

    /// The full name of a file that is there.
    virtual Text ExistingFile() = 0;
    /// A folder with nothing in it, gone with the platform together with what is in it then.
    virtual Text EmptyFolder() = 0;
    virtual void MakeFolder(TextView path) = 0;
    /// A folder that no file can be made in, the next one at least.
    virtual Text FolderThatTakesNoFile() = 0;
    /// What another program reads from a file; nothing when it cannot.
    virtual std::optional<std::string> ContentOf(TextView path) = 0;

    /// From now on, what is written to the debug output is heard.
    virtual void ListenToDebugOutput() = 0;
    virtual std::vector<std::string> DebugOutputHeard() = 0;

    /// What the version resource of the host's executable says.
    virtual HostProgram Host() = 0;
    /// From now on, what is written to the host's log is heard and goes nowhere else.
    virtual void ListenToHostLog() = 0;
    virtual std::vector<std::string> HostLogHeard() = 0;

    /// Where the next line begins, as a device context of the screen knows it.
    virtual platform::Point NextLineBegins(Handle context) = 0;

    /// A value of any type below HKEY_CURRENT_USER, exactly these bytes.
    virtual void PutValue(TextView path, TextView name, std::uint32_t type, const std::string& bytes) = 0;
    /// Removes a key below HKEY_CURRENT_USER with all that is in it.
    virtual void RemoveKeyTree(TextView path) = 0;
};

/// A fresh one, from the source of the flavour that is built.
std::unique_ptr<PlatformUnderTest> MakePlatform();

class ContractTest : public testing::Test {
protected:
    platform::Platform& platform() { return mUnderTest->Services(); }
    PlatformUnderTest& outside() { return *mUnderTest; }

private:
    std::unique_ptr<PlatformUnderTest> mUnderTest = MakePlatform();
};

/// Text for messages: ASCII as it is, the rest as code units.
inline std::string Printed(TextView text) {
    std::string printed;
    for (const char16_t c : text) {
        if (c >= 0x20 && c < 0x7F) {
            printed += static_cast<char>(c);
        } else {
            printed += '{' + std::to_string(static_cast<unsigned>(c)) + '}';
        }
    }
    return printed;
}

/// Skips a test that writes what it expects as the United States do.
#define NEED_AMERICAN_FORMATS() \
    if (!outside().HasAmericanFormats()) GTEST_SKIP() << "the user's language or formats are others"

/// Expects `windows`; where Wine is known to do otherwise expects that, so that the run fails when Wine has changed.
#define EXPECT_EQ_BUT_WINE(value, windows, wine) \
    do {                                         \
        if (outside().IsWine()) {                \
            EXPECT_EQ(value, wine);              \
        } else {                                 \
            EXPECT_EQ(value, windows);           \
        }                                        \
    } while (false)

}  // namespace kwo::contract
