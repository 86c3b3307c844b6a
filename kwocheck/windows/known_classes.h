#pragma once

#include <windows.h>

#include <vector>

#include "kwocheck/facts.h"

namespace kwocheck {

/// How one class is tried: a member that changes nothing.
struct Trial {
    const CLSID& classId;
    const wchar_t* library;
    const wchar_t* name;
    const wchar_t* member;
    WORD flags;
    /// One letter for each argument: r the key of the current user, n a zero, s an empty text, d the date 0, o a null
    /// object.
    const char* arguments;
};

/// The libraries with all classes that clients can create, as their descriptions (IDL) have them.
std::vector<KnownLibrary> KnownLibraries();

/// `known` must be a class of KnownLibraries.
const Trial& TrialOf(const KnownClass& known);

}  // namespace kwocheck
