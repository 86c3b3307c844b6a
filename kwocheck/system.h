#pragma once

#include <string>

#include "kwocheck/facts.h"

namespace kwocheck {

/// What the check asks of the system. Nothing is changed.
/// Members raise nothing but lack of memory.
class System {
public:
    virtual ~System() = default;

    virtual Surroundings Describe() = 0;

    /// A text below the key of all classes of one root, as programs of that bitness see it.
    /// An empty `value` is the default value of the key. A value that is no text is missing.
    virtual RegistryText ReadClasses(Scope root, Bitness view, TextView key, TextView value) = 0;

    /// The names of the keys below one of those keys; none if it is missing or may not be listed.
    virtual std::vector<Text> KeysBelow(Scope root, Bitness view, TextView key) = 0;

    /// A file that the registry names for programs of that bitness.
    /// A folder is no file. A name without a folder is looked for where Windows looks for DLLs.
    virtual FileFacts Examine(TextView path, Bitness view) = 0;

    /// The bytes of a file, at most `most` of them. `bytes` is set for kThere only.
    virtual FileFacts::State Read(TextView path, std::size_t most, std::string& bytes) = 0;

    /// Creates an object as a host does, by its name, and calls one member that changes nothing.
    virtual Creation Create(const KnownClass& known) = 0;
};

}  // namespace kwocheck
