#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "kwoinit/message_line.h"
#include "kwoinit/problem_report.h"

namespace kwo::kwoinit {

/// The messages of one file, by program, language and number.
class MessageFile {
public:
    static constexpr std::size_t kLargestFile = std::size_t{64} << 20;
    static constexpr std::size_t kLongestLineBytes = std::size_t{1} << 20;  ///< a longer one: this is no text file
    static constexpr std::size_t kLongestLine = 65'536;                     ///< a longer one is skipped
    static constexpr std::int64_t kWidestTable = 1'000'000;  ///< from a program's first number to its last
    static constexpr std::size_t kMostTexts = 1'000'000;
    static constexpr std::size_t kMostSections = 10'000;
    static constexpr std::size_t kMostProblems = 100;  ///< that are reported one by one

    /// Reads UTF-8 text, with or without a mark in front. Bad lines are reported under `name` and skipped; a bad line
    /// that looks like a header ends the section before it. What is no message file as a whole is reported as well, and
    /// raises ComponentError.
    MessageFile(std::string_view bytes, TextView name, ProblemReport& report);

    struct Extent {
        std::int32_t lowest = 0;
        std::int32_t highest = 0;
        std::int32_t characters = 0;
    };
    /// Over all languages of the program; nothing when there is no text for it.
    std::optional<Extent> ExtentOf(TextView program) const;

private:
    struct Section {
        Text program;  ///< case-folded
        std::uint16_t language;
    };
    struct Message {
        std::uint32_t section;
        std::int32_t number;
        std::uint32_t line;
        Text text;
    };
    class Reader;
    /// Those that hold a text; KWOUtil's for a program that has none.
    std::vector<std::uint32_t> SectionsOf(TextView program) const;
    bool HasTexts(std::uint32_t section) const;
    TextView Find(std::uint32_t section, std::int32_t number) const;

    std::vector<Section> mSections;
    std::vector<Message> mMessages;  ///< by section and number

public:
    /// The texts of one program in one language. Lives no longer than the file.
    class Texts {
    public:
        /// Empty when there is none, in any language that may stand in.
        TextView operator[](std::int32_t number) const;

    private:
        friend class MessageFile;
        Texts(const MessageFile& file, std::vector<std::uint32_t> sections)
            : mFile(file), mSections(std::move(sections)) {}

        const MessageFile& mFile;
        std::vector<std::uint32_t> mSections;  ///< the best first
    };
    /// Each text is of the language itself, else of its primary language (the neutral one, the default one, any), else
    /// of the section without a language. A program that has no text at all is served KWOUtil's.
    Texts In(TextView program, std::uint16_t language) const;
};

}  // namespace kwo::kwoinit
