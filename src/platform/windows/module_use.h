#pragma once

namespace kwo::platform::windows {

/// Hears for how long the system may call into the module that holds the component: it must stay loaded meanwhile.
class ModuleUse {
public:
    virtual ~ModuleUse() = default;

    virtual void Begin() noexcept {}
    virtual void End() noexcept {}

    /// For modules that nobody unloads.
    static ModuleUse& Nobody() {
        static ModuleUse nobody;
        return nobody;
    }
};

}  // namespace kwo::platform::windows
