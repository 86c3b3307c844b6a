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
///
///     const MessageFile file(bytes, path, report);
///     const MessageFile::Texts texts = file.In(u"KWOUtil", 0x0407);
///     const TextView text = texts[1900];
///
/// The whole file is kept in memory. Once read, it never changes, so several threads may look up texts. Upper and
/// lower case of program names are the same, in Latin, Greek and Cyrillic letters.
class MessageFile {
public:
    /// Bytes. A larger file is refused.
    static constexpr std::size_t kLargestFile = std::size_t{64} << 20;
    /// A file with a longer line is refused: it is no text file.
    static constexpr std::size_t kLongestLineBytes = std::size_t{1} << 20;
    /// Characters. A longer line is skipped.
    static constexpr std::size_t kLongestLine = 65'536;
    /// From a program's first number to its last.
    /// A number farther away is skipped, because callers make room for the whole table.
    static constexpr std::int64_t kWidestTable = 1'000'000;
    /// A file with more texts or more sections is refused.
    static constexpr std::size_t kMostTexts = 1'000'000;
    static constexpr std::size_t kMostSections = 10'000;
    /// Problems that are reported one by one; the others are counted.
    static constexpr std::size_t kMostProblems = 100;

    /// Reads UTF-8 text, with or without a byte order mark.
    /// Keeps neither `bytes` nor `report`.
    /// Reports bad lines under `name`, with their numbers, and skips them; a damaged header ends the section before
    /// it. If a number has several texts in a section, the first one counts.
    /// A file that is refused as a whole is reported and raises ComponentError: FileTooLarge, NotText, LineTooLong or
    /// TooManyEntries.
    MessageFile(std::string_view bytes, TextView name, ProblemReport& report);

    /// What a program's texts need: their lowest and highest number and the characters of all of them, in all
    /// languages.
    struct Extent {
        std::int32_t lowest = 0;
        std::int32_t highest = 0;
        std::int32_t characters = 0;
    };
    /// The lowest and the highest number in any language of the program; those of KWOUtil if the program has no text.
    /// Nothing if KWOUtil has none either.
    /// A caller uses it to make room for a table, which it then fills from In.
    std::optional<Extent> ExtentOf(TextView program) const;

    /// A text of the file, with its escapes replaced.
    struct Entry {
        TextView program;  ///< case-folded
        std::uint16_t language;
        std::int32_t number;
        std::uint32_t line;
        TextView text;
    };
    /// All texts that count, by section in the order of the file, and by number.
    /// The views are valid as long as the file.
    std::vector<Entry> Entries() const;

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
    /// Reads the lines in their order; it lives as long as the constructor runs.
    class Reader;
    /// The sections of the program that contain a text, or those of KWOUtil if the program has none.
    std::vector<std::uint32_t> SectionsOf(TextView program) const;
    /// False for a section whose lines were all skipped.
    bool HasTexts(std::uint32_t section) const;
    /// Empty if the section has no such text.
    TextView Find(std::uint32_t section, std::int32_t number) const;

    /// In the order of the file; several headers of the same name and language are one section.
    std::vector<Section> mSections;
    std::vector<Message> mMessages;  ///< by section and number

public:
    /// The texts of one program in one language. The file must outlive them.
    class Texts {
    public:
        /// The text of a number; empty if no suitable language has one. Valid as long as the file.
        TextView operator[](std::int32_t number) const;

    private:
        friend class MessageFile;
        Texts(const MessageFile& file, std::vector<std::uint32_t> sections)
            : mFile(file), mSections(std::move(sections)) {}

        const MessageFile& mFile;
        std::vector<std::uint32_t> mSections;  ///< the best first
    };
    /// The texts of a program for a user's language identifier, for example 0x0407.
    /// The choice is made for each number on its own.
    /// Each text comes from the language itself, else from its primary language (the neutral one, the default one, any
    /// other), else from the section without a language. A program without any text is served KWOUtil's.
    Texts In(TextView program, std::uint16_t language) const;
};

}  // namespace kwo::kwoinit
