#include "kwocheck/windows/known_classes.h"

#include <oleauto.h>

#include <algorithm>
#include <iterator>

#include "com_support/bstr.h"
#include "kwocheck/windows/kwocheck_version.h"
#include "kwoinit.h"
#include "kwoutil.h"

namespace kwocheck {

using kwo::com_support::TextOf;

namespace {

// clang-format off
const Trial kTrials[] = {
    {CLSID_KWORegistry,   L"KWOUtil", L"KWORegistry",   L"KWO_RegGetValue",  DISPATCH_METHOD,      "rsss"},
    {CLSID_KWOUtility,    L"KWOUtil", L"KWOUtility",    L"KWO_IsWinNT",      DISPATCH_PROPERTYGET, ""},
    {CLSID_KWOSplitterV,  L"KWOUtil", L"KWOSplitterV",  L"LeftMargin",       DISPATCH_PROPERTYGET, ""},
    {CLSID_KWOPicBtn,     L"KWOUtil", L"KWOPicBtn",     L"Caption",          DISPATCH_PROPERTYGET, ""},
    {CLSID_KWOSysParams,  L"KWOUtil", L"KWOSysParams",  L"MenuFont",         DISPATCH_PROPERTYGET, ""},
    {CLSID_KWOSysTray,    L"KWOUtil", L"KWOSysTray",    L"Tip",              DISPATCH_PROPERTYGET, ""},
    {CLSID_KWOSysMetrics, L"KWOUtil", L"KWOSysMetrics", L"ScaleMode",        DISPATCH_PROPERTYGET, ""},
    {CLSID_KWOMonthView,  L"KWOUtil", L"KWOMonthView",  L"CanSelect",        DISPATCH_PROPERTYGET, ""},
    {CLSID_KWOTimer,      L"KWOUtil", L"KWOTimer",      L"Interval",         DISPATCH_PROPERTYGET, ""},
    {CLSID_IKWOTimer,     L"KWOUtil", L"IKWOTimer",     L"Tick",             DISPATCH_METHOD,      "o"},
    {CLSID_IKWOAlarm,     L"KWOUtil", L"IKWOAlarm",     L"Alarm",            DISPATCH_METHOD,      "ond"},
    {CLSID_KWOInitialize, L"KWOInit", L"KWOInitialize", L"KWO_MsgTableSize", DISPATCH_METHOD,      "ssnnn"},
};
// clang-format on

Text RegistryForm(REFGUID id) {
    wchar_t text[40] = {};
    ::StringFromGUID2(id, text, static_cast<int>(std::size(text)));
    return TextOf(text);
}

}  // namespace

std::vector<KnownLibrary> KnownLibraries() {
    std::vector<KnownLibrary> libraries = {{u"KWOUtil", RegistryForm(LIBID_KWOUtil), KWOCHECK_LIBRARY_VERSION, {}},
                                           {u"KWOInit", RegistryForm(LIBID_KWOInit), u"1.0", {}}};
    for (const Trial& trial : kTrials) {
        const Text library = TextOf(trial.library);
        const auto owner = std::ranges::find(libraries, library, &KnownLibrary::name);
        owner->classes.push_back({library, TextOf(trial.name), RegistryForm(trial.classId)});
    }
    return libraries;
}

const Trial& TrialOf(const KnownClass& known) {
    return *std::ranges::find(kTrials, known.name, [](const Trial& trial) { return TextOf(trial.name); });
}

}  // namespace kwocheck
