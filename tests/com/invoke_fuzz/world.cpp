#include "world.h"

#include <olectl.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "com_support/bstr.h"
#include "com_support/exception_info.h"
#include "thread.h"

namespace kwo::invoke_fuzz {

namespace {

using com_support::As;
using com_support::Bstr;
using com_support::ExceptionInfo;

constexpr int kMostCalls = 120;
constexpr int kDeepest = 3;

constexpr IID kNobodys = {0x12345678, 0x1234, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}};

bool IsTimer(const ClassDescription& description) {
    return description.name == L"KWOTimer";
}

/// Members that take a key or wait as long as they are told: their arguments are chosen with care.
bool IsDelicate(const Member& member) {
    return std::ranges::any_of(member.parameters, [](const std::wstring& name) {
        return name == L"KeyRoot" || name == L"hKey" || name == L"Seconds";
    });
}

/// Late-bound failures other than an exception of the member.
bool IsRefusal(HRESULT status) {
    return (static_cast<unsigned>(status) & 0xFFFF0000u) == 0x80020000u || status == E_INVALIDARG ||
           status == E_OUTOFMEMORY || status == E_POINTER;
}

/// Whether the system can describe the code; Wine cannot describe all that Windows can.
bool HasText(HRESULT code) {
    wchar_t text[256];
    return FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(code),
                          0, text, static_cast<DWORD>(std::size(text)), nullptr) > 0;
}

void Say(IDispatch& object, DISPID id, WORD flags, VARIANT* value) {
    DISPID put = DISPID_PROPERTYPUT;
    const bool isPut = value != nullptr;
    DISPPARAMS arguments = {value, isPut ? &put : nullptr, isPut ? 1u : 0u, isPut ? 1u : 0u};
    object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &arguments, nullptr, nullptr, nullptr);
}

/// What one argument of an early-bound call is: a value, or a variable of the type that is pointed to.
struct StackArgument {
    VARIANT value = {};     ///< what DispCallFunc passes
    VARIANT variable = {};  ///< what a pointer points to
};

}  // namespace

int World::Run() {
    constexpr int kMostActions = 16;
    mIngredients = {[this] { return AnyObject(); }, static_cast<LONG>(reinterpret_cast<INT_PTR>(mSurroundings.key)),
                    mSurroundings.today};
    for (int count = 4 + random.Below(4); count > 0; --count)
        mHosts.push_back(std::make_unique<HostObject>(*this));
    Create();
    for (int count = 1 + random.Below(kMostActions); count > 0; --count)
        Act();
    EndEverything();
    return mCalls;
}

void World::Act() {
    ++mCalls;
    if (mMade.empty() || random.Once(12)) return Create();
    const auto chosen = [&] { return random.Of(mMade); };
    switch (random.Below(16)) {
        case 0:
            return AskForNames(chosen());
        case 1:
            return AskForInterfaces(chosen());
        case 2:
            return AskForTypes(chosen());
        case 3:
            return Connect(chosen());
        case 4:
            return Enumerate(chosen());
        case 5:
            return Pump();
        case 6:
            return InvokeElsewhere(chosen());
        case 7:
        case 8:
            return CallEarlyBound(chosen());
        case 9: {
            const std::size_t which = random.Place(mMade.size());
            // A timer with something pending lives on, which nobody could end later.
            if (IsTimer(*mMade[which].description)) return;
            const ComPtr<IDispatch> released = std::move(mMade[which].object);
            mMade.erase(mMade.begin() + static_cast<std::ptrdiff_t>(which));
            return;
        }
        default:
            return Invoke(chosen());
    }
}

void World::Create() {
    const ClassDescription& description = random.Of(mSurroundings.classes);
    mSurroundings.tell("creating", description.name);
    ComPtr<IClassFactory> factory;
    Holds(mSurroundings.library.GetClassObject(description.id, IID_IClassFactory, factory.OutVoid()) == S_OK,
          "every class has a factory");
    Made made = {&description, {}};
    Holds(factory->CreateInstance(nullptr, IID_IDispatch, made.object.OutVoid()) == S_OK, "every class can be created");
    mMade.push_back(std::move(made));
    if (random.Once(4)) {
        void* object = this;
        Holds(factory->CreateInstance(nullptr, kNobodys, &object) == E_NOINTERFACE && object == nullptr,
              "an unknown interface is refused");
        Holds(factory->CreateInstance(mHosts[0].get(), IID_IDispatch, &object) == CLASS_E_NOAGGREGATION,
              "aggregation is refused");
        Holds(factory->CreateInstance(nullptr, IID_IDispatch, nullptr) == E_POINTER, "a null pointer is refused");
    }
}

void World::AskForNames(Made made) {
    constexpr UINT kMostNames = 6;
    constexpr LCID kLocales[] = {LOCALE_USER_DEFAULT, 0x0409, 0x0407, 0, 0xFFFF};
    std::vector<std::wstring> names;
    const Member& member = random.Of(made.description->members);
    names.push_back(random.Once(6) ? L"NoSuchMember" : member.name);
    while (names.size() < kMostNames && random.Flag()) {
        const bool isKnown = !member.parameters.empty() && !random.Once(3);
        names.push_back(isKnown ? random.Of(member.parameters) : L"none");
    }
    std::vector<LPOLESTR> pointers;
    for (std::wstring& name : names) {
        if (random.Flag()) CharUpperW(name.data());
        pointers.push_back(random.Once(24) ? nullptr : name.data());
    }
    std::vector<DISPID> ids(names.size(), -77);
    const UINT count = random.Once(16) ? 0 : static_cast<UINT>(names.size());
    LPOLESTR* const given = random.Once(24) ? nullptr : pointers.data();
    DISPID* const place = random.Once(24) ? nullptr : ids.data();
    mSurroundings.tell("names", member.name);
    const HRESULT status =
        made.object->GetIDsOfNames(random.Once(24) ? kNobodys : IID_NULL, given, count, random.Of(kLocales), place);
    Holds(SUCCEEDED(status) || status == DISP_E_UNKNOWNNAME || status == DISP_E_UNKNOWNINTERFACE ||
              status == E_POINTER || status == E_INVALIDARG,
          "names are known, unknown, or refused");
    if (status == S_OK && count > 0) Holds(ids[0] == member.id, "a name has the identifier of its member");
}

void World::FillArguments(const Member& member, Arguments& arguments) {
    UINT count = member.arguments;
    if (random.Once(6)) count = static_cast<UINT>(random.Below(18));
    // The last argument comes first.
    for (UINT at = count; at > 0; --at)
        AddArgument(member, at - 1, arguments);
}

/// Mostly what the member takes, else anything; nothing that waits long or leaves the registry key.
void World::AddArgument(const Member& member, std::size_t at, Arguments& arguments) {
    const std::wstring name = at < member.parameters.size() ? member.parameters[at] : L"";
    const bool isDescribed = at < member.stack.size();
    const auto type = static_cast<VARTYPE>(isDescribed ? member.stack[at] & ~VT_BYREF : VT_EMPTY);
    VARIANT value = {};
    if (name == L"KeyRoot" || name == L"hKey") {
        value.vt = VT_I4;
        value.lVal = random.Once(8) ? -1 : mIngredients.key;
    } else if (name == L"Seconds") {
        value.vt = random.Once(4) ? VT_NULL : VT_I2;
        if (value.vt == VT_I2) value.iVal = static_cast<SHORT>(-random.Below(3));
    } else if (isDescribed && member.mayBeLeftOut[at] && random.Flag()) {
        value.vt = VT_ERROR;
        value.scode = DISP_E_PARAMNOTFOUND;
    } else if (type == VT_DISPATCH && !random.Once(6)) {
        value.vt = VT_DISPATCH;
        value.pdispVal = AnyHostObject();
        value.pdispVal->AddRef();
    } else if (type == VT_DATE && random.Flag()) {
        value.vt = VT_DATE;
        value.date = mIngredients.day + random.Below(60);
    } else if (type != VT_EMPTY && type != VT_UNKNOWN && random.Flag()) {
        value = ValueOf(type);
    } else {
        return arguments.AddAny(random, mIngredients);
    }
    arguments.Add(value);
}

void World::Invoke(Made made) {
    constexpr WORD kFlags[] = {0, 1, 2, 4, 8, 3, 12, 15, 0xFFFF};
    constexpr LCID kLocales[] = {LOCALE_USER_DEFAULT, 0x0409, 0x0407, 0, 0xFFFF};
    const Member& member = random.Of(made.description->members);
    Arguments arguments;
    FillArguments(member, arguments);
    std::vector<DISPID> named;
    const bool isPut = (member.kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (isPut && !random.Once(12)) named.push_back(DISPID_PROPERTYPUT);
    while (!IsDelicate(member) && random.Once(8))
        named.push_back(random.Below(20) - 4);

    DISPPARAMS parameters = {arguments.Data(), named.empty() ? nullptr : named.data(), arguments.Count(),
                             static_cast<UINT>(named.size())};
    if (random.Once(40)) parameters.rgvarg = nullptr;
    // A caller that says that there are more names than arguments.
    if (random.Once(40)) parameters.cNamedArgs = 0;
    // A caller without a reference of its own relies on the one in the list, which may go during the call.
    const bool isListed =
        std::ranges::any_of(mMade, [&](const Made& one) { return one.object.Get() == made.object.Get(); });
    const bool keepsObject = !isListed || random.Flag();
    IDispatch* const object = made.object.Get();
    if (!keepsObject) made.object = nullptr;

    const WORD flags = random.Once(8) ? random.Of(kFlags) : member.kind;
    const DISPID id = random.Once(24) ? random.Below(40) - 20 : member.id;
    VARIANT result = {};
    ExceptionInfo exception;
    UINT badArgument = 0xDEAD;
    const bool wantsResult = !random.Once(6);
    const bool wantsException = !random.Once(6);
    const bool wantsPlace = !random.Once(6);
    mSurroundings.tell("member", member.name);
    mRunning.push_back(&arguments);
    const int silentFailures = mSilentFailures;
    const HRESULT status = object->Invoke(id, random.Once(40) ? kNobodys : IID_NULL, random.Of(kLocales), flags,
                                          random.Once(60) ? nullptr : &parameters, wantsResult ? &result : nullptr,
                                          wantsException ? &exception : nullptr, wantsPlace ? &badArgument : nullptr);
    mRunning.pop_back();
    mSurroundings.tell("after the member", member.name);
    CheckFailure(status, wantsException ? &exception : nullptr, silentFailures);
    Holds(IsValid(result), "the result is a valid variant");
    Holds(FAILED(status) || badArgument == 0xDEAD, "only a failure names a bad argument");
    Holds(badArgument == 0xDEAD || badArgument < arguments.Count(), "a bad argument is one of the arguments");
    Holds(arguments.AreValid(), "the caller's variables hold valid variants");
    if (member.name == L"KWO_RegCreateKey" && result.vt == VT_I4 && result.lVal != mIngredients.key)
        RegCloseKey(reinterpret_cast<HKEY>(static_cast<INT_PTR>(result.lVal)));
    VariantClear(&result);
    SetErrorInfo(0, nullptr);
}

void World::CheckFailure(HRESULT status, const EXCEPINFO* exception, int silentFailures) const {
    if (SUCCEEDED(status)) {
        Holds(status == S_OK, "a call that succeeds returns S_OK");
    } else if (status != DISP_E_EXCEPTION) {
        Holds(IsRefusal(status), "a call is refused with a code of automation");
    } else if (exception != nullptr) {
        Holds(exception->scode != 0 || exception->wCode != 0, "an exception has a number");
        Holds(SysStringLen(exception->bstrSource) > 0, "an exception has a source");
        Holds(SysStringLen(exception->bstrDescription) > 0 || mSilentFailures > silentFailures ||
                  !HasText(exception->scode),
              "an exception has a description");
    }
}

/// A value of that type; nothing if what was chosen has none of it.
VARIANT World::ValueOf(VARTYPE type) {
    VARIANT any = AnyValue(random, mIngredients);
    if (type == VT_VARIANT) return any;
    VARIANT value = {};
    // Another object would have another virtual table.
    if (type != VT_UNKNOWN && FAILED(VariantChangeType(&value, &any, 0, type))) value = {};
    VariantClear(&any);
    return value;
}

void World::CallEarlyBound(Made made) {
    const Member& member = random.Of(made.description->members);
    // Values that wait or delete are for the careful late-bound calls.
    if (member.stack.empty() || IsDelicate(member) || member.name == L"KWO_LoadApp") return;
    const ComPtr<IDispatch> object = As<IDispatch>(made.object.Get(), made.description->interfaceId);
    Holds(static_cast<bool>(object), "an object has its default interface");
    std::vector<StackArgument> arguments(member.stack.size());
    std::vector<VARTYPE> types = member.stack;
    std::vector<VARIANTARG*> pointers;
    bool allThere = true;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        StackArgument& argument = arguments[at];
        pointers.push_back(&argument.value);
        const bool isResult = member.hasResult && at + 1 == arguments.size();
        const auto base = static_cast<VARTYPE>(types[at] & ~VT_BYREF);
        VARIANT given = isResult ? VARIANT{} : ValueOf(base);
        if ((types[at] & VT_BYREF) == 0) {
            argument.value = given;
            continue;
        }
        argument.variable = given;
        const bool isNull = random.Once(12);
        allThere = allThere && (!isNull || member.mayBeLeftOut[at]);
        argument.value.vt = types[at];
        argument.value.byref = base == VT_VARIANT ? static_cast<void*>(&argument.variable) : &argument.variable.llVal;
        if (isNull) argument.value.byref = nullptr;
    }
    VARIANT returned = {};
    mSurroundings.tell("early-bound member", member.name);
    SetErrorInfo(0, nullptr);
    const int silentFailures = mSilentFailures;
    const HRESULT called = DispCallFunc(object.Get(), static_cast<ULONG_PTR>(member.offset), CC_STDCALL, VT_ERROR,
                                        static_cast<UINT>(types.size()), types.data(), pointers.data(), &returned);
    mSurroundings.tell("after the early-bound member", member.name);
    Holds(called == S_OK, "an early-bound call can be made");
    if (FAILED(returned.scode)) {
        ComPtr<IErrorInfo> error;
        Holds(GetErrorInfo(0, error.Out()) == S_OK, "a failure leaves an error object");
        Bstr description;
        error->GetDescription(description.Out());
        Holds(!description.View().empty() || mSilentFailures > silentFailures || !HasText(returned.scode),
              "the error object has a description");
    } else {
        Holds(returned.scode == S_OK, "an early-bound call that succeeds returns S_OK");
        // The reference implementations of the callbacks do nothing at all.
        Holds(allThere || made.description->name.starts_with(L"IKWO"), "a null pointer is refused");
    }
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        const auto base = static_cast<VARTYPE>(member.stack[at] & ~VT_BYREF);
        VARIANT& variable = arguments[at].variable;
        if ((member.stack[at] & VT_BYREF) == 0) {
            VariantClear(&arguments[at].value);
            continue;
        }
        if (base != VT_VARIANT) variable.vt = base;
        VariantClear(&variable);
    }
}

void World::InvokeElsewhere(Made made) {
    const Member& member = random.Of(made.description->members);
    const ClassDescription& other = random.Of(mSurroundings.classes);
    const DWORD apartment = random.Flag() ? COINIT_APARTMENTTHREADED : COINIT_MULTITHREADED;
    const com_test::Library& library = mSurroundings.library;
    HRESULT read = S_OK;
    HRESULT created = S_OK;
    mSurroundings.tell("on another thread, property", member.name);
    com_test::Thread thread([&] {
        CoInitializeEx(nullptr, apartment);
        {
            DISPPARAMS none = {};
            VARIANT result = {};
            // A property that is read runs no code of the host.
            if (member.kind == DISPATCH_PROPERTYGET) {
                read = made.object->Invoke(member.id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                           &result, nullptr, nullptr);
            }
            VariantClear(&result);
            ComPtr<IClassFactory> factory;
            ComPtr<IDispatch> object;
            created = library.GetClassObject(other.id, IID_IClassFactory, factory.OutVoid());
            if (SUCCEEDED(created)) created = factory->CreateInstance(nullptr, IID_IDispatch, object.OutVoid());
        }
        CoUninitialize();
    });
    thread.Join();
    Holds(created == S_OK, "an object can be created on another thread");
    CheckFailure(read, nullptr, mSilentFailures);
}

void World::AskForInterfaces(Made made) {
    const IID kKnown[] = {
        IID_IUnknown,           IID_IDispatch,         made.description->interfaceId, IID_IProvideClassInfo,
        IID_IProvideClassInfo2, IID_ISupportErrorInfo, IID_IConnectionPointContainer};
    const IID kOther[] = {kNobodys, IID_IPersist, IID_IOleObject, IID_IStream, IID_IClassFactory, GUID_NULL};
    const ComPtr<IUnknown> identity = As<IUnknown>(made.object.Get(), IID_IUnknown);
    Holds(made.object->QueryInterface(IID_IUnknown, nullptr) == E_POINTER, "a null pointer is refused");
    for (const IID& from : kKnown) {
        const ComPtr<IUnknown> found = As<IUnknown>(made.object.Get(), from);
        const bool mayLack = from == IID_IConnectionPointContainer;
        Holds(static_cast<bool>(found) || mayLack, "an object has its interfaces");
        if (!found) continue;
        Holds(As<IUnknown>(found.Get(), IID_IUnknown).Get() == identity.Get(), "an object has one identity");
        Holds(As<IDispatch>(found.Get(), IID_IDispatch).Get() == made.object.Get(), "interfaces lead to each other");
        void* none = this;
        Holds(found->QueryInterface(random.Of(kOther), &none) == E_NOINTERFACE && none == nullptr,
              "an unknown interface is refused");
    }
}

void World::AskForTypes(Made made) {
    UINT count = 77;
    Holds(made.object->GetTypeInfoCount(random.Once(4) ? nullptr : &count) == (count == 77 ? E_POINTER : S_OK) &&
              (count == 77 || count == 1),
          "there is one type description");
    ComPtr<ITypeInfo> info;
    Holds(made.object->GetTypeInfo(1, 0, info.Out()) == DISP_E_BADINDEX && !info, "there is no second one");
    Holds(made.object->GetTypeInfo(0, 0, nullptr) == E_POINTER, "a null pointer is refused");
    Holds(made.object->GetTypeInfo(0, 0, info.Out()) == S_OK, "there is a type description");
    const auto provider = As<IProvideClassInfo2>(made.object.Get(), IID_IProvideClassInfo2);
    Holds(provider->GetClassInfo(info.Out()) == S_OK && provider->GetClassInfo(nullptr) == E_POINTER,
          "there is a class description");
    GUID id = {};
    const HRESULT source = provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id);
    Holds(
        source == (made.description->sourceId == GUID_NULL ? E_NOINTERFACE : S_OK) && id == made.description->sourceId,
        "a class names its events");
    Holds(provider->GetGUID(2, &id) == E_INVALIDARG && id == GUID_NULL, "an unknown kind is refused");
}

void World::Connect(Made made) {
    const auto container = As<IConnectionPointContainer>(made.object.Get(), IID_IConnectionPointContainer);
    const bool hasEvents = made.description->sourceId != GUID_NULL;
    Holds(static_cast<bool>(container) == hasEvents, "a class with events has connection points");
    if (!container) return;
    if (!mConnections.empty() && random.Flag()) {
        const std::size_t which = random.Place(mConnections.size());
        const Connection connection = mConnections[which];
        mConnections.erase(mConnections.begin() + static_cast<std::ptrdiff_t>(which));
        mSurroundings.tell("disconnecting", made.description->name);
        Holds(connection.point->Unadvise(connection.cookie) == S_OK, "a sink can be disconnected");
        Holds(connection.point->Unadvise(connection.cookie) == CONNECT_E_NOCONNECTION, "and only once");
        return;
    }
    ComPtr<IConnectionPoint> point;
    Holds(container->FindConnectionPoint(kNobodys, point.Out()) == CONNECT_E_NOCONNECTION && !point,
          "unknown events have no connection point");
    Holds(container->FindConnectionPoint(made.description->sourceId, nullptr) == E_POINTER,
          "a null pointer is refused");
    Holds(container->FindConnectionPoint(made.description->sourceId, point.Out()) == S_OK, "events have one");
    IID events = {};
    ComPtr<IConnectionPointContainer> owner;
    Holds(point->GetConnectionInterface(&events) == S_OK && events == made.description->sourceId,
          "it knows its events");
    Holds(point->GetConnectionPointContainer(owner.Out()) == S_OK && owner.Get() == container.Get(),
          "it knows its object");
    DWORD cookie = 0;
    mSurroundings.tell("connecting", made.description->name);
    Holds(point->Advise(nullptr, &cookie) == E_POINTER, "no sink is refused");
    Holds(point->Advise(mHosts[0].get(), nullptr) == E_POINTER, "a null pointer is refused");
    const HRESULT status = point->Advise(AnyHostObject(), &cookie);
    Holds(status == S_OK ? cookie != 0 : FAILED(status) && cookie == 0, "a connection has a number");
    if (status == S_OK) mConnections.push_back({point, cookie});
}

void World::Enumerate(Made made) {
    constexpr ULONG kMost = 4;
    const auto container = As<IConnectionPointContainer>(made.object.Get(), IID_IConnectionPointContainer);
    if (!container) return;
    ComPtr<IEnumConnectionPoints> points;
    Holds(
        container->EnumConnectionPoints(points.Out()) == S_OK && container->EnumConnectionPoints(nullptr) == E_POINTER,
        "connection points can be listed");
    IConnectionPoint* given[kMost] = {};
    ULONG fetched = 77;
    const auto asked = static_cast<ULONG>(random.Below(kMost + 1));
    Holds(points->Next(asked, given, &fetched) == (asked <= 1 ? S_OK : S_FALSE) && fetched == std::min(asked, 1ul),
          "there is one connection point");
    for (ULONG at = 0; at < fetched; ++at)
        ComPtr<IConnectionPoint>::Adopt(given[at]).Reset();
    ComPtr<IEnumConnectionPoints> clone;
    Holds(points->Clone(clone.Out()) == S_OK && points->Clone(nullptr) == E_POINTER, "a list can be copied");
    Holds(clone->Skip(5) == S_FALSE && clone->Reset() == S_OK && clone->Skip(1) == S_OK, "and gone through again");
    Holds(points->Next(2, nullptr, &fetched) == E_POINTER, "a null pointer is refused");

    ComPtr<IConnectionPoint> point;
    container->FindConnectionPoint(made.description->sourceId, point.Out());
    ComPtr<IEnumConnections> connections;
    Holds(point->EnumConnections(connections.Out()) == S_OK, "connections can be listed");
    CONNECTDATA one = {};
    while (connections->Next(1, &one, &fetched) == S_OK) {
        Holds(fetched == 1 && one.pUnk != nullptr && one.dwCookie != 0, "a connection is whole");
        one.pUnk->Release();
    }
}

void World::Pump() {
    constexpr int kMostMessages = 40;
    mSurroundings.tell("messages", L"");
    MSG message;
    for (int count = 0; count < kMostMessages && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++count) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void World::EndEverything() {
    isCalm = true;
    mSurroundings.tell("the end", L"");
    for (const Connection& connection : std::exchange(mConnections, {}))
        connection.point->Unadvise(connection.cookie);
    for (const Made& made : mMade) {
        if (!IsTimer(*made.description)) continue;
        for (const Member& member : made.description->members) {
            VARIANT empty = {};
            if (member.name == L"CancelTimers") Say(*made.object, member.id, DISPATCH_METHOD, nullptr);
            if (member.name == L"Item") Say(*made.object, member.id, DISPATCH_PROPERTYPUT, &empty);
        }
    }
    if (random.Flag()) UseControlsAgain();
    mMade.clear();
    Pump();
    SetErrorInfo(0, nullptr);
    for (const auto& host : mHosts)
        Holds(host->references == 0, "nothing holds an object of the host at the end");
    Holds(mSurroundings.library.CanUnloadNow() == S_OK, "nothing holds the DLL at the end");
}

/// Whatever happened to it, a control can be created on good objects.
void World::UseControlsAgain() {
    for (const Made& made : mMade) {
        const bool isCalendar = made.description->name == L"KWOMonthView";
        const bool isSplitter = made.description->name == L"KWOSplitterV";
        if (!isCalendar && !isSplitter && made.description->name != L"KWOPicBtn") continue;
        const auto create = std::ranges::find(made.description->members, L"Create", &Member::name);
        Arguments arguments;
        const UINT controls = isSplitter ? 3 : 1;
        VARIANT value = {};
        value.vt = isCalendar ? VT_DATE : VT_BSTR;
        if (isCalendar) value.date = mIngredients.day;
        if (!isSplitter) arguments.Add(value);
        for (UINT control = 0; control < controls; ++control) {
            value = {};
            value.vt = VT_DISPATCH;
            value.pdispVal = mHosts[control].get();
            value.pdispVal->AddRef();
            arguments.Add(value);
        }
        DISPPARAMS parameters = {arguments.Data(), nullptr, arguments.Count(), 0};
        VARIANT result = {};
        mSurroundings.tell("creating again", made.description->name);
        const HRESULT status = made.object->Invoke(create->id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                                   &parameters, &result, nullptr, nullptr);
        Holds(status == S_OK && result.vt == VT_BOOL, "a control can be created again");
        // Intended: a button says nothing.
        const bool saysNothing = made.description->name == L"KWOPicBtn";
        Holds(saysNothing || result.boolVal != VARIANT_FALSE, "a control can be created again");
    }
}

World::Answer World::Decide() {
    if (isCalm) return Answer::Good;
    if (mDepth < kDeepest && mCalls < kMostCalls && random.Once(10)) {
        ++mDepth;
        if (!mRunning.empty() && random.Flag()) mRunning.back()->ChangeOne(random, mIngredients);
        if (random.Flag()) Act();
        --mDepth;
    }
    switch (random.Below(40)) {
        case 0:
            return Answer::Other;
        case 1:
            return Answer::Failure;
        default:
            return Answer::Good;
    }
}

VARIANT World::AnyComponentObject() {
    VARIANT value = {};
    if (mMade.empty()) return value;
    value.vt = VT_DISPATCH;
    value.pdispVal = random.Of(mMade).object.Get();
    value.pdispVal->AddRef();
    return value;
}

HRESULT World::AnyFailure() {
    ++mSilentFailures;
    const HRESULT kFailures[] = {E_FAIL,
                                 E_NOTIMPL,
                                 E_OUTOFMEMORY,
                                 DISP_E_MEMBERNOTFOUND,
                                 DISP_E_TYPEMISMATCH,
                                 static_cast<HRESULT>(0x800A017C),
                                 RPC_E_DISCONNECTED,
                                 E_UNEXPECTED};
    return random.Of(kFailures);
}

IDispatch* World::AnyHostObject() {
    return random.Of(mHosts).get();
}

IDispatch* World::AnyObject() {
    if (random.Once(8)) return nullptr;
    if (!mMade.empty() && random.Once(4)) return random.Of(mMade).object.Get();
    return AnyHostObject();
}

bool World::IsSource(REFIID id) const {
    return std::ranges::any_of(mSurroundings.classes,
                               [&](const ClassDescription& description) { return description.sourceId == id; });
}

LONG World::Context() const {
    return static_cast<LONG>(reinterpret_cast<INT_PTR>(mSurroundings.context));
}

LONG World::Window() const {
    return static_cast<LONG>(reinterpret_cast<INT_PTR>(mSurroundings.window));
}

void World::WriteInto(DISPPARAMS* arguments) {
    if (isCalm || arguments == nullptr || !random.Once(6)) return;
    for (UINT at = 0; at < arguments->cArgs; ++at) {
        const VARIANT& argument = arguments->rgvarg[at];
        if (argument.byref == nullptr) continue;
        if (argument.vt == (VT_BYREF | VT_VARIANT)) {
            VariantClear(argument.pvarVal);
            *argument.pvarVal = AnyAnswer();
        } else if (argument.vt == (VT_BYREF | VT_BOOL)) {
            *argument.pboolVal = random.Flag() ? VARIANT_TRUE : VARIANT_FALSE;
        } else if (argument.vt == (VT_BYREF | VT_DATE)) {
            *argument.pdate = mIngredients.day + random.Below(9);
        } else if (argument.vt == (VT_BYREF | VT_DISPATCH)) {
            IDispatch* const object = random.Once(4) ? nullptr : AnyHostObject();
            if (object != nullptr) object->AddRef();
            IDispatch* const before = std::exchange(*argument.ppdispVal, object);
            if (before != nullptr) before->Release();
        }
    }
}

void World::ReleaseArrows() {
    for (std::size_t at = 0; at < mMade.size(); ++at) {
        const Made made = mMade[at];
        if (made.description->name != L"KWOMonthView") continue;
        for (const Member& member : made.description->members) {
            if (member.name != L"MouseUp") continue;
            VARIANT zeros[4] = {};
            for (VARIANT& zero : zeros)
                zero.vt = VT_I2;
            DISPPARAMS arguments = {zeros, nullptr, 4, 0};
            made.object->Invoke(member.id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, nullptr, nullptr,
                                nullptr);
        }
    }
}

}  // namespace kwo::invoke_fuzz
