#pragma once

#include <chrono>
#include <functional>
#include <optional>

namespace kwohost {

/// Runs the thread's messages, so timers and events arrive and open dialog boxes stay usable, until `duration` has
/// passed; never shorter, and longer only by the message that runs at the end.
///
///     if (const auto quit = RunMessages(duration, [] {})) exit(*quit);
///
/// A duration of 0 runs the pending messages: until there are none, or half a second has passed. `afterEach` runs
/// after every message; it may raise, which ends the wait.
/// Returns the exit code of a request to quit that arrived meanwhile, which is then gone from the queue; nothing
/// otherwise.
[[nodiscard]] std::optional<int> RunMessages(std::chrono::milliseconds duration,
                                             const std::function<void()>& afterEach);
/// The same until `isOver` returns true. It is asked at first and after whatever the thread has handled.
[[nodiscard]] std::optional<int> RunMessagesUntil(const std::function<bool()>& isOver,
                                                  const std::function<void()>& afterEach);

}  // namespace kwohost
