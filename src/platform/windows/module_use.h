#pragma once

namespace kwo::platform::windows {

/// Is told while the system may call into the module that holds the component. The module must stay loaded meanwhile.
class ModuleUse {
public:
    /// The module is needed from now on. Calls nest.
    virtual void Begin() noexcept {}
    /// Takes one Begin back.
    virtual void End() noexcept {}

    /// For a module that is never unloaded.
    static ModuleUse& Nobody();

protected:
    /// Nobody owns one. Its destructor does nothing, so it may be global.
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
