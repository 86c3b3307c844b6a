#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/geometry.h"
#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::platform::simulated {

/// What happened on the desktop, one short line for each call that a user, the host or the system could notice, in the
/// order in which the calls were made.
/// The lines are UTF-8.
///
///     EXPECT_EQ(desktop.log.Starting("SetTimer"), (Lines{"SetTimer 500 -> 32767"}));
class Log {
public:
    /// Adds a line at the end. It must be UTF-8 and have no line end.
    void Add(std::string line) { mLines.push_back(std::move(line)); }
    /// All lines since the beginning or Clear, the oldest first.
    const std::vector<std::string>& Lines() const { return mLines; }
    /// The lines that begin with `prefix`.
    std::vector<std::string> Starting(std::string_view prefix) const;
    /// Forgets all lines.
    void Clear() { mLines.clear(); }

private:
    std::vector<std::string> mLines;
};

/// A text as log lines show it: control characters as `\r`, `\n`, `\0`, `\xNN`, the rest as it is.
std::string Shown(TextView text);
/// A value as log lines show it: `12`, `1.5`, `"text"`, `True`, `Date 2.5`, `Nothing`, `<TypeName>`.
std::string Shown(const Variant& value);
/// `(x,y)`.
std::string Shown(Point point);
/// `(left,top,right,bottom)`.
std::string Shown(const Rect& area);
/// How the line of a call with a handle begins: `Call 12 `.
std::string On(std::string_view call, Handle handle);
/// `0x` and hexadecimal digits without leading zeros.
std::string Hex(std::uint32_t number);

}  // namespace kwo::platform::simulated
