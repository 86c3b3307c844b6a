#pragma once

#include <string>
#include <vector>

#include "event_connections.h"
#include "invoke_fuzz/random.h"
#include "script_host.h"

namespace kwo::soak {

using invoke_fuzz::Random;

/// Forms of the script host with a calendar, two buttons and a splitter, driven by the pointer and the keys.
class FormWork {
public:
    FormWork();
    ~FormWork();

    /// Opens a form, uses what is on it, and closes it; the thread's messages are processed meanwhile.
    void Use(Random& random);
    /// How often a form was told of this: "month", "date", "click", "drag".
    long Told(const wchar_t* what);
    /// The numbers of all of them.
    std::string Totals();

private:
    kwo::com_support::OwnedVariant Do(const wchar_t* procedure, std::vector<VARIANT> arguments = {});

    kwohost::ScriptHost mHost;
    kwohost::EventConnections mConnections;
};

}  // namespace kwo::soak
