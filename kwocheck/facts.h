#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/text.h"

namespace kwocheck {

using kwo::platform::Text;
using kwo::platform::TextView;

enum class Bitness { k32, k64 };

/// For whom something is registered.
enum class Scope { kUser, kMachine };

/// A class that clients can create by the name LIBRARY.NAME.
struct KnownClass {
    Text library;
    Text name;
    /// In registry form: "{00020424-0000-0000-C000-000000000046}".
    Text classId;

    [[nodiscard]] Text ProgId() const { return library + u"." + name; }
};

/// A library of classes; its file is named after it.
struct KnownLibrary {
    Text name;
    Text libraryId;
    /// As type library keys have it: "4.5".
    Text version;
    std::vector<KnownClass> classes;

    [[nodiscard]] Text FileName() const { return name + u".dll"; }
};

/// A text of the registry.
struct RegistryText {
    enum class State { kMissing, kDenied, kThere };
    State state = State::kMissing;
    /// Variables of the environment are replaced.
    Text text;
};

/// What can be told about a file without running it.
struct FileFacts {
    enum class State {
        kMissing,
        kDenied,  ///< it is there, but this user may not read it
        kThere
    };
    State state = State::kMissing;
    /// Nothing if the file is no DLL or program for Intel or AMD processors.
    std::optional<Bitness> bitness;
    /// From its version resource; empty if it has none.
    Text product;
    /// "4.5.0.0"
    Text version;
    /// Windows marks a file that comes from the Internet.
    bool isBlocked = false;
    /// Where it was looked for, as this program writes it: with its folder, and without the quotation marks that the
    /// registry may have.
    Text path = {};
};

/// A file that the registry names, in one of its two roots.
struct Registered {
    Scope scope = Scope::kMachine;
    /// The registry does not let this user read the entry; nothing else is known then.
    bool isDenied = false;
    /// As the registry has it.
    Text path;
    FileFacts file;
};

/// A class that is registered to be loaded into programs.
struct RegisteredClass : Registered {
    Text threadingModel;
};

/// What a programmatic identifier stands for.
struct RegisteredName {
    Scope scope = Scope::kMachine;
    bool isDenied = false;
    Text classId;
};

/// How far the creation of an object went.
struct Creation {
    enum class Result {
        kNoName,    ///< the system does not find the class by its name
        kNoObject,  ///< the class is known, and creating an object fails
        kNoAnswer,  ///< there is an object, and calling a member of it fails
        kWorks
    };
    Result result = Result::kWorks;
    /// Of the call that failed.
    std::uint32_t code = 0;
    Text reason;
};

/// A class as programs of one bitness see it. In each list the user's entry comes first; a missing entry is not listed.
struct ClassFacts {
    KnownClass known;
    std::vector<RegisteredName> names;
    std::vector<RegisteredClass> entries;
    /// Nothing if it was not tried: for the other bitness, and for a file of somebody else.
    std::optional<Creation> creation;
};

/// A message file and what is wrong in it.
struct MessageFileFacts {
    Text path;
    FileFacts::State state = FileFacts::State::kMissing;
    /// The file as a whole is refused; the last problem says why.
    bool isRefused = false;
    /// "C:\Program Files\KWOUtil\x64\KWOInit.nls(12): there is no number"
    std::vector<Text> problems;
    /// What a translator may want to know. Nothing is wrong with it.
    std::vector<Text> remarks;
};

/// A type library of another version than the expected one.
struct OtherVersion : Registered {
    Text version;
};

struct LibraryFacts {
    KnownLibrary known;
    /// Of the type library.
    std::vector<Registered> entries;
    /// What is registered under the same identifier with other versions.
    std::vector<OtherVersion> others;
    std::vector<ClassFacts> classes;
};

/// Everything as programs of one bitness see it.
struct View {
    Bitness bitness = Bitness::k64;
    std::vector<LibraryFacts> libraries;
    /// The one beside the companion; nothing if the companion's file is not there.
    std::optional<MessageFileFacts> messageFile;
};

/// Where the check runs.
struct Surroundings {
    Bitness own = Bitness::k64;
    bool isWindows64 = true;
    /// Programs with an administrator's rights find only what is registered for everybody.
    bool isElevated = false;
    /// "10.0.19045"
    Text windows;
    /// "4.5.0.0": the version that is expected of every file.
    Text version;
    /// The folder of this program, with a backslash at the end.
    Text folder;
};

struct Facts {
    Surroundings here;
    /// This program's bitness first; 32-bit Windows has no other.
    std::vector<View> views;
    /// Copies of KWOUtil.dll and KWOInit.dll in the folder of this program, which can be registered.
    std::vector<Text> copies;
};

/// The entry that counts for a program here; null if it sees none.
template <class Entry>
const Entry* Effective(const std::vector<Entry>& entries, bool isElevated) {
    for (const Entry& entry : entries)
        if (!isElevated || entry.scope == Scope::kMachine) return &entry;
    return nullptr;
}

/// Whether two class identifiers in registry form are the same. Upper and lower case do not matter.
bool AreSameIds(TextView one, TextView other);

/// Whether two paths are written the same, but for upper and lower case of plain letters.
bool AreSamePaths(TextView one, TextView other);

/// Whether the file is one of this product, of any version.
inline bool IsOurs(const FileFacts& file) {
    return file.product == u"KWOUtil";
}

}  // namespace kwocheck
