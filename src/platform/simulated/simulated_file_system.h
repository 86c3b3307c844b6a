#pragma once

#include <map>

#include "platform/file_system.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// A file system of names with attributes.
/// Drive roots and the current folder (relative names) are always there; names are compared without regard to the case
/// of ASCII letters.
/// Calls that can fail: GetFileAttributes, GetFileAttributesAnsi and FindFirstFile. They leave no line in the log.
class SimulatedFileSystem final : public FileSystem {
public:
    /// The system's attributes; see FileSystem::kFolder for folders.
    static constexpr std::int32_t kReadOnly = 0x01;
    static constexpr std::int32_t kHidden = 0x02;
    static constexpr std::int32_t kSystem = 0x04;
    static constexpr std::int32_t kArchive = 0x20;

    explicit SimulatedFileSystem(World& world);

    std::int32_t Attributes(TextView path) override;
    std::int32_t AttributesAnsi(TextView path) override;
    bool ListsFile(TextView pattern) override;

    /// Adds a file, or changes the attributes of one. Also adds the folders above it.
    void AddFile(TextView path, std::int32_t attributes = kArchive);
    /// Adds a folder and the folders above it.
    void AddFolder(TextView path) { AddFile(path, kFolder); }
    /// Removes one name. What is in a folder of that name stays.
    void Remove(TextView path);

    /// The attributes of a file or folder, without a call that is counted or fails.
    std::int32_t Look(TextView path);

private:
    World& mWorld;
    std::map<Text, std::int32_t> mNames;
};

}  // namespace kwo::platform::simulated
