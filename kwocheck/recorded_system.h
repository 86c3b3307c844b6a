#pragma once

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "kwocheck/system.h"

namespace kwocheck {

/// For tests: a system that is put together entry by entry.
class RecordedSystem final : public System {
public:
    using KeyPath = std::tuple<Scope, Bitness, Text, Text>;

    Surroundings Describe() override { return here; }
    RegistryText ReadClasses(Scope root, Bitness view, TextView key, TextView value) override {
        const auto found = registry.find({root, view, Text(key), Text(value)});
        return found == registry.end() ? RegistryText{} : found->second;
    }
    std::vector<Text> KeysBelow(Scope root, Bitness view, TextView key) override {
        std::set<Text> names;
        const Text above = Text(key) + u"\\";
        for (const auto& [place, text] : registry) {
            const auto& [scope, bitness, path, value] = place;
            if (scope != root || bitness != view || !path.starts_with(above)) continue;
            names.insert(path.substr(above.size(), path.find(u'\\', above.size()) - above.size()));
        }
        return {names.begin(), names.end()};
    }
    FileFacts Examine(TextView path, Bitness /*view*/) override {
        const auto found = files.find(Text(path));
        FileFacts facts = found == files.end() ? FileFacts{} : found->second;
        if (facts.path.empty()) facts.path = Text(path);
        return facts;
    }
    FileFacts::State Read(TextView path, std::size_t most, std::string& bytes) override {
        const auto found = texts.find(Text(path));
        if (found == texts.end()) return FileFacts::State::kMissing;
        bytes = found->second.substr(0, most);
        return readState;
    }
    Creation Create(const KnownClass& known) override {
        created.push_back(known.ProgId());
        return creation;
    }

    void Put(Scope root, Bitness view, const Text& key, const Text& text, const Text& value = {}) {
        registry[{root, view, key, value}] = {RegistryText::State::kThere, text};
    }
    void Forbid(Scope root, Bitness view, const Text& key) {
        registry[{root, view, key, {}}] = {RegistryText::State::kDenied, {}};
    }

    /// Registers a library as its DLL does.
    void Register(const KnownLibrary& library, Scope root, Bitness view, const Text& path) {
        Put(root, view, TypeLibraryKey(library, view), path);
        for (const KnownClass& one : library.classes) {
            Put(root, Bitness::k32, one.ProgId() + u"\\CLSID", one.classId);
            Put(root, Bitness::k64, one.ProgId() + u"\\CLSID", one.classId);
            Put(root, view, ServerKey(one), path);
            Put(root, view, ServerKey(one), u"Apartment", u"ThreadingModel");
        }
    }
    void Unregister(Bitness view) {
        std::erase_if(registry, [view](const auto& entry) { return std::get<Bitness>(entry.first) == view; });
    }

    static Text ServerKey(const KnownClass& one) { return u"CLSID\\" + one.classId + u"\\InprocServer32"; }
    static Text TypeLibraryKey(const KnownLibrary& library, Bitness view) {
        return TypeLibraryKey(library, library.version, view);
    }
    static Text TypeLibraryKey(const KnownLibrary& library, const Text& version, Bitness view) {
        return u"TypeLib\\" + library.libraryId + u"\\" + version +
               (view == Bitness::k64 ? u"\\0\\win64" : u"\\0\\win32");
    }

    Surroundings here{Bitness::k64, true, false, u"10.0.19045", u"4.5.0.0", u"C:\\tools\\"};
    std::map<KeyPath, RegistryText> registry;
    std::map<Text, FileFacts> files;
    /// What Read finds. A file is there for Examine only if it is in `files`, too.
    std::map<Text, std::string> texts;
    FileFacts::State readState = FileFacts::State::kThere;
    /// What every creation answers.
    Creation creation;
    /// The names that were tried, in their order.
    std::vector<Text> created;
};

}  // namespace kwocheck
