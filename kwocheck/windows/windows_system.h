#pragma once

#include <windows.h>

#include "kwocheck/system.h"

namespace kwocheck {

/// The system that this program runs on. The thread must have entered an apartment before it creates objects.
class WindowsSystem final : public System {
public:
    /// `version` is the one of this program.
    explicit WindowsSystem(TextView version);

    Surroundings Describe() override { return mHere; }
    RegistryText ReadClasses(Scope root, Bitness view, TextView key, TextView value) override;
    std::vector<Text> KeysBelow(Scope root, Bitness view, TextView key) override;
    FileFacts Examine(TextView path, Bitness view) override;
    FileFacts::State Read(TextView path, std::size_t most, std::string& bytes) override;
    Creation Create(const KnownClass& known) override;

private:
    Surroundings mHere;
    Text mWindowsFolder;
};

}  // namespace kwocheck
