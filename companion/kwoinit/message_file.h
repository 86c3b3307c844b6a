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

    /// Reads UTF-8 text, with or without a byte order mark. Reports bad lines under `name` and skips them; a damaged
    /// header ends the section before it. A file that is refused as a whole is reported and raises ComponentError.
    MessageFile(std::string_view bytes, TextView name, ProblemReport& report);

    /// What a program's texts need: their lowest and highest number and the characters of all of them.
    struct Extent {
        std::int32_t lowest = 0;
        std::int32_t highest = 0;
        std::int32_t characters = 0;
    };
    /// The lowest and the highest number in any language of the program; nothing if there is no text for it.
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
    /// The sections of the program that contain a text, or those of KWOUtil if the program has none.
    std::vector<std::uint32_t> SectionsOf(TextView program) const;
    bool HasTexts(std::uint32_t section) const;
    TextView Find(std::uint32_t section, std::int32_t number) const;

    std::vector<Section> mSections;
    std::vector<Message> mMessages;  ///< by section and number

public:
    /// The texts of one program in one language. The file must outlive them.
    class Texts {
    public:
        /// The text of a number; empty if no suitable language has one.
        TextView operator[](std::int32_t number) const;

    private:
        friend class MessageFile;
        Texts(const MessageFile& file, std::vector<std::uint32_t> sections)
            : mFile(file), mSections(std::move(sections)) {}

        const MessageFile& mFile;
        std::vector<std::uint32_t> mSections;  ///< the best first
    };
    /// Each text comes from the language itself, else from its primary language (the neutral one, the default one, any
    /// other), else from the section without a language. A program without any text is served KWOUtil's.
    Texts In(TextView program, std::uint16_t language) const;
};

}  // namespace kwo::kwoinit
