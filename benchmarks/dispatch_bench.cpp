#include <windows.h>
#include <oleauto.h>

#include <cstdio>

#include "com_support/owned_variant.h"
#include "kwoutil.h"
#include "measure.h"

// What a call and an object of the component cost, beside the same from the platform's own parts, in one process.
// KWOUtil must be registered.

namespace {

using namespace kwo::bench;
using kwo::com_support::OwnedVariant;

/// A late-bound call as a script makes it: by name every time.
void CallByName(IDispatch& object, const wchar_t* name, WORD flags, DISPPARAMS& arguments) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    DISPID id = DISPID_UNKNOWN;
    OwnedVariant result;
    object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &arguments, &result, nullptr, nullptr);
}

void MeasureCalls() {
    constexpr DISPID kInterval = 0x68030000;
    const auto object = Created(L"KWOUtil.KWOTimer");
    const auto dictionary = Created(L"Scripting.Dictionary");
    const auto timer = Early<_KWOTimer>(object, IID__KWOTimer);
    ComPtr<ITypeInfo> info;
    Must(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Out()), "GetTypeInfo");
    DISPPARAMS none = {nullptr, nullptr, 0, 0};
    OwnedVariant result;

    std::printf("\nReading a property (KWOTimer.Interval)\n");
    LONG interval = 0;
    const double direct = Cost(1'000'000, [&] { timer->get_Interval(&interval); });
    const double invoked = Cost(500'000, [&] {
        object->Invoke(kInterval, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &result, nullptr,
                       nullptr);
    });
    const double throughTypeInfo = Cost(
        50'000, [&] { info->Invoke(timer.Get(), kInterval, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr); });
    Row("by the virtual table", direct);
    Row("by Invoke", invoked);
    Row("by ITypeInfo::Invoke", throughTypeInfo);
    Target("Invoke against the virtual table", invoked / direct, "at most", 2, invoked <= 2 * direct);
    Target("ITypeInfo::Invoke against Invoke", throughTypeInfo / invoked, "at least", 10,
           throughTypeInfo >= 10 * invoked);

    std::printf("\nWriting it\n");
    OwnedVariant value;
    value.vt = VT_I4;
    value.lVal = 500;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS one = {&value, &put, 1, 1};
    const double directPut = Cost(1'000'000, [&] { timer->put_Interval(500); });
    const double invokedPut = Cost(500'000, [&] {
        object->Invoke(kInterval, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &one, nullptr, nullptr, nullptr);
    });
    Row("by the virtual table", directPut);
    Row("by Invoke", invokedPut);
    Target("Invoke against the virtual table", invokedPut / directPut, "at most", 3, invokedPut <= 3 * directPut);

    std::printf("\nReading it late bound, the name looked up every time\n");
    const double ours = Cost(200'000, [&] { CallByName(*object, L"Interval", DISPATCH_PROPERTYGET, none); });
    const double theirs = Cost(100'000, [&] { CallByName(*dictionary, L"Count", DISPATCH_PROPERTYGET, none); });
    Row("KWOTimer.Interval", ours);
    Row("Scripting.Dictionary.Count", theirs);
    Target("Scripting.Dictionary against KWOUtil", theirs / ours, "at least", 5, theirs >= 5 * ours);
}

/// Each alarm replaces the one before, which is due at the same moment, so the system's timer runs on.
void MeasureAlarms() {
    constexpr DATE kPast = 2;         // 1900-01-01
    constexpr DATE kTimeOfDay = 0.5;  // noon
    constexpr LONG kTag = 1;
    const auto timer = Early<_KWOTimer>(Created(L"KWOUtil.KWOTimer"), IID__KWOTimer);
    const auto other = Early<_KWOTimer>(Created(L"KWOUtil.KWOTimer"), IID__KWOTimer);
    other->AddRelativeAlarm(0, kTag);

    std::printf("\nAdding an alarm in place of another, while an earlier one waits\n");
    const auto cost = [&](auto add) { return Cost(20'000, [&] { Must(add(), "adding an alarm"); }); };
    const double relative = cost([&] { return timer->AddRelativeAlarm(60'000, kTag); });
    const double byDate = cost([&] { return timer->AddAlarm(kPast, kTag); });
    const double byTime = cost([&] { return timer->AddAlarm(kTimeOfDay, kTag); });
    Row("in a number of milliseconds", relative);
    Row("at a date", byDate);
    Row("at a time of day", byTime);
    Target("at a date, nanoseconds", std::max(byDate, byTime), "at most", 2000, std::max(byDate, byTime) <= 2000);
    timer->CancelTimers(nullptr, nullptr);
    other->CancelTimers(nullptr, nullptr);
}

void MeasureCreation(const wchar_t* name) {
    const auto factory = FactoryOf(name);
    const auto held = Created(name);

    std::printf("\nAn object created and released (%ls)\n", name);
    const double byFactory = Cost(50'000, [&] {
        ComPtr<IDispatch> object;
        factory->CreateInstance(nullptr, IID_IDispatch, object.OutVoid());
    });
    const double byName = Cost(500, [&] { Created(name); });
    const double peer = Cost(500, [&] { Created(L"Scripting.Dictionary"); });
    Row("by a class factory that is held", byFactory);
    Row("by its programmatic identifier", byName);
    Row("Scripting.Dictionary by its programmatic identifier", peer);
    Target("by a class factory, nanoseconds", byFactory, "under", 1000, byFactory < 1000);
    Target("by name against Scripting.Dictionary", byName / peer, "about", 1, byName <= 1.1 * peer);
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    Must(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "CoInitializeEx");
    MeasureCalls();
    MeasureAlarms();
    MeasureCreation(L"KWOUtil.KWORegistry");
    MeasureCreation(L"KWOUtil.IKWOTimer");
    ::CoUninitialize();
    return 0;
}
