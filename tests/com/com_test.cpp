#include "com_test.h"

#include <algorithm>
#include <cstdio>

#include "com_support/exception_info.h"

namespace kwo::com_test {

Outcome InvokeId(IDispatch* object, DISPID id, WORD flags, const std::vector<Var>& arguments,
                 const std::vector<DISPID>& namedIds) {
    // Plain copies, last argument first: by-reference ones must reach the caller's own variables.
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    std::vector<DISPID> names = namedIds;
    DISPPARAMS parameters = {reversed.data(), names.data(), static_cast<UINT>(reversed.size()),
                             static_cast<UINT>(names.size())};
    Outcome outcome;
    com_support::ExceptionInfo exception;
    outcome.status = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &outcome.result, &exception,
                                    &outcome.badArgument);
    if (outcome.status == DISP_E_EXCEPTION) exception.Complete();
    outcome.scode = exception.scode;
    outcome.code = exception.wCode;
    outcome.source = com_support::View(exception.bstrSource);
    outcome.description = com_support::View(exception.bstrDescription);
    return outcome;
}

DISPID IdOf(IDispatch* object, const wchar_t* member) {
    LPOLESTR name = const_cast<LPOLESTR>(member);
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id))) return DISPID_UNKNOWN;
    return id;
}

Outcome Invoke(IDispatch* object, const wchar_t* member, WORD flags, const std::vector<Var>& arguments) {
    const DISPID id = IdOf(object, member);
    if (id == DISPID_UNKNOWN) {
        Outcome outcome;
        outcome.status = DISP_E_UNKNOWNNAME;
        return outcome;
    }
    return InvokeId(object, id, flags, arguments);
}

Outcome Call(IDispatch* object, const wchar_t* member, const std::vector<Var>& arguments) {
    return Invoke(object, member, DISPATCH_METHOD, arguments);
}

Outcome Get(IDispatch* object, const wchar_t* property, const std::vector<Var>& arguments) {
    return Invoke(object, property, DISPATCH_PROPERTYGET, arguments);
}

Outcome Let(IDispatch* object, const wchar_t* property, const Var& value) {
    return InvokeId(object, IdOf(object, property), DISPATCH_PROPERTYPUT, {value}, {DISPID_PROPERTYPUT});
}

Outcome Set(IDispatch* object, const wchar_t* property, const Var& value) {
    return InvokeId(object, IdOf(object, property), DISPATCH_PROPERTYPUTREF, {value}, {DISPID_PROPERTYPUT});
}

Outcome CallNamed(IDispatch* object, const wchar_t* member, const std::vector<Var>& positional,
                  const std::vector<NamedArgument>& named) {
    std::vector<LPOLESTR> names = {const_cast<LPOLESTR>(member)};
    for (const NamedArgument& argument : named)
        names.push_back(const_cast<LPOLESTR>(argument.name));
    std::vector<DISPID> ids(names.size(), DISPID_UNKNOWN);
    const HRESULT found =
        object->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()), LOCALE_USER_DEFAULT, ids.data());
    if (FAILED(found)) {
        Outcome outcome;
        outcome.status = found;
        return outcome;
    }
    std::vector<Var> all = positional;
    // The array is reversed as a whole, so the first named identifier belongs to the last argument.
    std::vector<DISPID> namedIds(ids.begin() + 1, ids.end());
    std::reverse(namedIds.begin(), namedIds.end());
    for (const NamedArgument& argument : named)
        all.push_back(argument.value);
    return InvokeId(object, ids[0], DISPATCH_METHOD, all, namedIds);
}

ComPtr<IDispatch> Create(const std::wstring& className) {
    ComPtr<IDispatch> object;
    CLSID id = {};
    const HRESULT known = CLSIDFromProgID((L"KWOUtil." + className).c_str(), &id);
    EXPECT_EQ(Hex(known), Hex(S_OK)) << "KWOUtil." << Narrow(className);
    if (FAILED(known)) return object;
    const HRESULT made = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.OutVoid());
    EXPECT_EQ(Hex(made), Hex(S_OK)) << "KWOUtil." << Narrow(className);
    return object;
}

const std::vector<std::wstring>& ClassNames() {
    static const std::vector<std::wstring> names = {
        L"KWORegistry",   L"KWOUtility",   L"KWOSplitterV", L"KWOPicBtn", L"KWOSysParams", L"KWOSysTray",
        L"KWOSysMetrics", L"KWOMonthView", L"KWOTimer",     L"IKWOTimer", L"IKWOAlarm",
    };
    return names;
}

::testing::AssertionResult Reached(const Outcome& outcome, const std::wstring& className) {
    if (outcome.status == S_OK) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << Narrow(className) << " answered " << Hex(outcome.status) << ", scode "
                                         << Hex(outcome.scode) << ", " << Narrow(outcome.description);
}

ErrorObject TakeErrorObject() {
    ErrorObject taken;
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.Out()) != S_OK || !info) return taken;
    Bstr source;
    Bstr description;
    info->GetSource(source.Out());
    info->GetDescription(description.Out());
    taken.present = true;
    taken.source = source.Text();
    taken.description = description.Text();
    return taken;
}

std::string Narrow(const std::wstring& text) {
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::string Hex(HRESULT status) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(status));
    return text;
}

}  // namespace kwo::com_test
