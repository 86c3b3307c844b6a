#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kwocheck/findings.h"
#include "kwocheck/recorded_system.h"
#include "kwocheck/survey.h"

namespace kwocheck {

inline std::string Plain(TextView text) {
    return {text.begin(), text.end()};
}

/// Both bitnesses registered for everybody. Each test changes what it is about.
class Installed : public ::testing::Test {
protected:
    Installed() {
        for (const Bitness bitness : {Bitness::k64, Bitness::k32}) {
            for (const KnownLibrary& library : libraries) {
                system.Register(library, Scope::kMachine, bitness, Dll(library, bitness));
                system.files[Dll(library, bitness)] = Ours(bitness);
            }
            system.texts[MessageFile(bitness)] = "[KWOUtil]\n1900 = text\n";
        }
    }

    static Text Folder(Bitness bitness) { return bitness == Bitness::k64 ? u"C:\\KWO\\x64\\" : u"C:\\KWO\\x86\\"; }
    static Text Dll(const KnownLibrary& library, Bitness bitness) { return Folder(bitness) + library.FileName(); }
    static Text MessageFile(Bitness bitness) { return Folder(bitness) + u"KWOInit.nls"; }
    static FileFacts Ours(Bitness bitness, const Text& version = u"4.5.0.0") {
        return {FileFacts::State::kThere, bitness, u"KWOUtil", version, false};
    }

    const KnownClass& Timer() const { return libraries[0].classes[0]; }
    const KnownLibrary& Component() const { return libraries[0]; }
    const KnownLibrary& Companion() const { return libraries[1]; }
    FileFacts& ComponentFile(Bitness bitness = Bitness::k64) { return system.files[Dll(Component(), bitness)]; }
    void EraseForAll(Bitness view, const Text& key, const Text& value = {}) {
        ASSERT_EQ(system.registry.erase({Scope::kMachine, view, key, value}), 1u) << Plain(key);
    }

    Facts Gathered() { return Survey(system, libraries); }
    /// "problem 64: what > next step [classes]", one for each finding.
    std::vector<std::string> Found() {
        std::vector<std::string> lines;
        for (const Finding& one : FindingsOf(Gathered())) {
            std::string line = one.severity == Finding::Severity::kProblem ? "problem " : "remark ";
            line += one.bitness == Bitness::k64 ? "64: " : "32: ";
            line += Plain(one.what) + " > " + Plain(one.nextStep);
            for (const Text& name : one.classes)
                line += " [" + Plain(name) + "]";
            lines.push_back(std::move(line));
        }
        return lines;
    }

    std::vector<KnownLibrary> libraries = {
        {u"KWOUtil",
         u"{AAAA}",
         u"4.5",
         {{u"KWOUtil", u"KWOTimer", u"{A001}"}, {u"KWOUtil", u"KWORegistry", u"{A002}"}}},
        {u"KWOInit", u"{BBBB}", u"1.0", {{u"KWOInit", u"KWOInitialize", u"{B001}"}}}};
    RecordedSystem system;
};

}  // namespace kwocheck
