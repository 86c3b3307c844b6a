#pragma once

namespace kwo::platform::windows {

/// Hears for how long the system may call into the module that holds the component: it must stay loaded meanwhile.
class ModuleUse {
public:
    virtual void Begin() noexcept {}
    virtual void End() noexcept {}

    /// For modules that nobody unloads.
    static ModuleUse& Nobody();

protected:
    /// Nobody owns one; without an end of its own it may be a global that needs none.
    ~ModuleUse() = default;
};

namespace detail {
class NoModule final : public ModuleUse {};
inline constinit NoModule gNoModule;
}  // namespace detail

inline ModuleUse& ModuleUse::Nobody() {
    return detail::gNoModule;
}

}  // namespace kwo::platform::windows
