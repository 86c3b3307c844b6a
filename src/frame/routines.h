#pragma once

#include <cstdint>

#include "frame/error.h"
#include "frame/host_identity.h"
#include "platform/file_system.h"
#include "platform/variant.h"

namespace kwo::frame {

/// The general routines that report through the error module.
class MKWORoutines {
public:
    MKWORoutines(platform::FileSystem& files, platform::SystemErrors& system, HostIdentity& identity, MKWOError& error)
        : mFiles(files), mSystem(system), mIdentity(identity), mError(error) {}

    /// True when there is a file of that name; a folder does not count. `attributes` becomes what the platform says of
    /// it, -1 when there is nothing: the platform's error is then saved, and raised with `raiseErrors`, or with
    /// `returnError` its number is the result as an error value.
    platform::Variant KWO_PathExists(const Text& path, bool returnError, std::int32_t& attributes, bool raiseErrors);

    /// False when `result` is 0 or -1, the platform's ways to say failure. With `useLastError` such a result raises the
    /// platform's last error, or 6 (invalid handle) when there is none.
    bool KWO_CheckAPIResult(std::int32_t result, bool useLastError, TextView source, TextView text);

    /// The number that hexadecimal digits write; 0 for none. More digits than 32 bits hold raise Overflow.
    std::int32_t KWO_HexToLong(TextView text);

private:
    platform::FileSystem& mFiles;
    platform::SystemErrors& mSystem;
    HostIdentity& mIdentity;
    MKWOError& mError;
};

}  // namespace kwo::frame
