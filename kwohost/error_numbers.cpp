#include "error_numbers.h"

#include <algorithm>

namespace kwohost {

namespace {

/// An error is thrown soon after it is made.
constexpr std::size_t kMostRemembered = 16;

}  // namespace

ErrorNumbers::ErrorNumbers() {
    AddMethod(L"Note", 2, 2, [this](Call& call) {
        mMade.push_front({call.Whole(0), call.Text(1)});
        if (mMade.size() > kMostRemembered) mMade.pop_back();
    });
}

const wchar_t* ErrorNumbers::Script() {
    return L"(function (Own) {\r\n"
           L"    Error = function (number, description) {\r\n"
           L"        var made = arguments.length > 1 ? new Own(number, description)\r\n"
           L"            : arguments.length > 0 ? new Own(number) : new Own();\r\n"
           L"        if (made.number > 0 && made.number < 65536) kwohost_errors.Note(made.number, "
           L"made.description);\r\n"
           L"        return made;\r\n"
           L"    };\r\n"
           L"    Error.prototype = Own.prototype;\r\n"
           L"    Error.prototype.constructor = Error;\r\n"
           L"})(Error);\r\n";
}

std::optional<HRESULT> ErrorNumbers::CodeOf(const std::wstring& description) const {
    const auto found =
        std::find_if(mMade.begin(), mMade.end(), [&](const Made& made) { return made.description == description; });
    if (found == mMade.end()) return std::nullopt;
    return ToResult(static_cast<RuntimeError>(found->number));
}

}  // namespace kwohost
