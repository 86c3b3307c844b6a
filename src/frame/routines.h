#pragma once

#include <cstdint>

#include "frame/error.h"
#include "frame/host_identity.h"
#include "platform/file_system.h"
#include "platform/variant.h"

namespace kwo::frame {

/// The general routines that report failures through the error module. The message table and the locale use them.
class MKWORoutines {
public:
    /// Keeps references to all of these; they must outlive it.
    MKWORoutines(platform::FileSystem& files, platform::SystemErrors& system, HostIdentity& identity, MKWOError& error)
        : mFiles(files), mSystem(system), mIdentity(identity), mError(error) {}

    /// Returns true if `path` is a file, and false for a folder.
    /// `attributes` receives the platform's file attributes.
    ///
    /// If there is nothing at `path`, or `path` is empty, `attributes` is -1 and the platform's error replaces the
    /// saved error. It is then raised (`raiseErrors`), or its number, the negated code, is returned as an error value
    /// (`returnError`), or the result is false.
    platform::Variant KWO_PathExists(const Text& path, bool returnError, std::int32_t& attributes, bool raiseErrors);

    /// Returns false if `result` is 0 or -1, which is how platform calls report failure, else true.
    /// With `useLastError` it raises the platform's last error instead, or 6 (invalid handle) if there is none. So
    /// call it directly after the platform call.
    /// `source` and `text` are those of MKWOError::KWO_RaiseError; `text` comes before the system's text.
    bool KWO_CheckAPIResult(std::int32_t result, bool useLastError, TextView source, TextView text);

    /// The number that a text of hexadecimal digits stands for, in capital or small letters; 0 for an empty text.
    /// Eight digits from 80000000 on give a negative number.
    /// Raises kInvalidHexDigit for any other character, also a blank, a sign or "&H", and this error replaces the
    /// saved one.
    /// Raises Overflow for a number that does not fit 32 bits.
    std::int32_t KWO_HexToLong(TextView text);

private:
    platform::FileSystem& mFiles;
    platform::SystemErrors& mSystem;
    HostIdentity& mIdentity;
    MKWOError& mError;
};

}  // namespace kwo::frame
