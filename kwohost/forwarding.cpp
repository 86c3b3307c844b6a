#include "forwarding.h"

#include <dispex.h>

#include <algorithm>
#include <utility>

namespace kwohost {

namespace {

std::vector<std::wstring> WordsOf(const std::wstring& text) {
    std::vector<std::wstring> words;
    std::size_t end = 0;
    for (;;) {
        const std::size_t begin = text.find_first_not_of(L' ', end);
        if (begin == std::wstring::npos) return words;
        end = std::min(text.find(L' ', begin), text.size());
        words.push_back(text.substr(begin, end - begin));
    }
}

bool HasName(const std::vector<std::wstring>& names, const std::wstring& wanted) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::wstring& name) { return lstrcmpiW(name.c_str(), wanted.c_str()) == 0; });
}

}  // namespace

void Forwarding::Add(ComPtr<IDispatch> object, const std::wstring& events) {
    const auto found = std::find_if(mTargets.begin(), mTargets.end(),
                                    [&](const Target& target) { return target.object.Get() == object.Get(); });
    if (found != mTargets.end()) {
        found->events = WordsOf(events);
    } else {
        mTargets.push_back({std::move(object), WordsOf(events)});
    }
}

void Forwarding::Clear() {
    // An object may come back here when it ends.
    const std::vector<Target> gone = std::exchange(mTargets, {});
}

std::vector<ComPtr<IDispatch>> Forwarding::ObjectsFor(const std::wstring& event) const {
    std::vector<ComPtr<IDispatch>> objects;
    for (const Target& target : mTargets)
        if (target.events.empty() || HasName(target.events, event)) objects.push_back(target.object);
    return objects;
}

DISPID IdOfMember(IDispatch* object, const std::wstring& name) {
    auto* text = const_cast<LPOLESTR>(name.c_str());
    DISPID id = DISPID_UNKNOWN;
    if (SUCCEEDED(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id))) return id;
    // An object of a script may have no names for this interface.
    ComPtr<IDispatchEx> extended;
    if (FAILED(object->QueryInterface(IID_PPV_ARGS(extended.Out()))) ||
        FAILED(extended->GetDispID(Bstr(name).Get(), fdexNameCaseInsensitive, &id)))
        return DISPID_UNKNOWN;
    return id;
}

}  // namespace kwohost
