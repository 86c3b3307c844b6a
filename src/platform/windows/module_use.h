#pragma once

namespace kwo::platform::windows {

/// Is told while the system may call into the module that holds the component: from the start of a timer to its end,
/// and while a callback runs.
/// The module must stay loaded meanwhile. This keeps the services from knowing how the DLL counts.
///
///     mUse.Begin();  // the system calls us from now on
///     mUse.End();    // not any more
class ModuleUse {
public:
    /// The module is needed from now on. Calls nest. May run on any thread.
    virtual void Begin() noexcept {}
    /// Takes one Begin back. The module may be unloaded as soon as the caller has returned to the system.
    virtual void End() noexcept {}

    /// For a module that is never unloaded, such as a test program: counts nothing.
    static ModuleUse& Nobody();

protected:
    /// Nobody owns one. Its destructor does nothing, so it may be global.
    ~ModuleUse() = default;
};

namespace detail {
/// The one that Nobody returns.
class NoModule final : public ModuleUse {};
inline constinit NoModule gNoModule;
}  // namespace detail

inline ModuleUse& ModuleUse::Nobody() {
    return detail::gNoModule;
}

}  // namespace kwo::platform::windows
