#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "component/component.h"
#include "platform/text.h"
#include "platform/values.h"
#include "platform/variant.h"

namespace kwo::controls {

using platform::Handle;
using platform::HostObjectRef;
using platform::Text;
using platform::TextView;

/// What a control is to a screen reader (ROLE_SYSTEM_).
enum class Role : std::int32_t { Separator = 21, Table = 24, PushButton = 43 };

/// What a screen reader reads of a control. An empty text is not told, unless there was another one before.
struct Spoken {
    static constexpr std::int32_t kFocused = 4;
    static constexpr std::int32_t kPressed = 8;

    Text name;
    Text value;
    Text description;
    Text shortcut;
    Text action;
    /// The sum of the flags above (STATE_SYSTEM_), in place of the window's own state. Without it, the latter counts.
    std::optional<std::int32_t> state;

    friend bool operator==(const Spoken&, const Spoken&) = default;
};

/// What screen readers are told about the window that a control draws on.
/// The control sees only a picture, and so does a reader: without this it finds a pane without a name.
///
///     mAnnotation.Take(window, Role::PushButton);
///     mAnnotation.Tell([&](Spoken& spoken) { spoken.name = u"Save"; });
///
/// A window has one annotation: that of the object which took it last. It goes with that object.
/// Nothing here fails: without a service, without memory, or when the window is gone, readers are told nothing.
/// Tell may run code of a reader, and that the host's, which may call any member again.
class Annotation {
public:
    /// `component` must outlive the object.
    explicit Annotation(component::Component& component) : mComponent(component) {}
    Annotation(const Annotation&) = delete;
    Annotation& operator=(const Annotation&) = delete;
    ~Annotation() { Release(); }

    /// Annotates `window` from now on, and no other. The object that annotated it before does so no longer.
    /// Does nothing for the window of the last Take, even if that one failed or if another object took the window
    /// since: Release comes first then.
    void Take(Handle window, Role role) noexcept;
    /// Takes the annotation away, unless another object took the window since.
    void Release() noexcept;
    /// The window of the last Take since Release, whether it is annotated or not; 0 for none.
    Handle Window() const { return mAsked; }

    /// Lets `compose` change what readers were told last, and tells them what is new then, each thing once.
    /// While no window is annotated, `compose` does not run. If it raises anything, nothing is told.
    template <class Compose>
    void Tell(Compose&& compose) noexcept {
        if (mWindow == 0) return;
        try {
            compose(mNow);
        } catch (...) {
            return;
        }
        TellNews();
    }

    /// The window of an object of the host (hWnd); 0 if it has none. May run any code of the host.
    /// Raises nothing but lack of memory.
    Handle WindowOf(const HostObjectRef& object) const;

private:
    /// One event for each text and one for the state; 0 where nothing is new.
    using Events = std::array<std::uint32_t, 6>;

    void TellNews() noexcept;
    Events NewEvents() const;
    /// Sets what is new; false if the service refuses.
    bool SetNews() noexcept;
    /// As Release, but remembers the window.
    void Drop() noexcept;

    component::Component& mComponent;
    /// 0 while nothing is annotated. Another object that takes the window sets it to 0.
    Handle mWindow = 0;
    Handle mAsked = 0;
    Spoken mTold;
    Spoken mNow;
};

}  // namespace kwo::controls
