#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform/log_files.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// Files with contents, in the folders of the file system of names.
/// The log tells of files made, closed and deleted; what was written is in the contents.
/// Calls that can fail: CreateFile, WriteFile and DeleteFile.
class SimulatedLogFiles final : public LogFiles {
public:
    explicit SimulatedLogFiles(World& world);

    File CreateNew(TextView path) override;
    bool Write(File file, std::string_view bytes) override;
    void Close(File file) override;
    bool Delete(TextView path) override;

    /// All that was written to a file that was made here; null if there is no such file.
    const std::string* Content(TextView path) const;
    /// How many files are open now; 0 when nothing leaks.
    std::size_t OpenFiles() const { return mOpen.size(); }
    /// What fits on the disk yet; a write that does not fit writes nothing.
    std::uint64_t freeBytes = UINT64_MAX;
    /// There is no memory left for a write: it throws std::bad_alloc.
    bool memoryIsShort = false;

private:
    World& mWorld;
    SimulatedFileSystem& mNames;
    std::map<Text, std::string> mContents;
    std::map<File, Text> mOpen;
    File mNext = 1;
};

}  // namespace kwo::platform::simulated
