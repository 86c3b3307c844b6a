#include "com_support/module_path.h"
#include "dll_under_test.h"
#include "fault_rounds.h"

namespace kwo::com_test {

namespace {

std::string TextOf(const Var& value) {
    switch (value.vt) {
        case VT_EMPTY:
            return {};
        case VT_BSTR:
            return '\'' + Narrow(value.Text()) + '\'';
        case VT_DISPATCH:
            return value.pdispVal != nullptr ? "an object" : "nothing";
        default: {
            Var text;
            if (FAILED(VariantChangeType(&text, const_cast<Var*>(&value), VARIANT_ALPHABOOL, VT_BSTR)))
                return "a value";
            return Narrow(text.Text());
        }
    }
}

/// The identifier of a class, from the module's type library. It is read once.
CLSID IdOfClass(HMODULE module, const std::wstring& name) {
    static std::map<std::wstring, CLSID> known;
    const auto [place, isNew] = known.try_emplace(name);
    if (isNew) place->second = ClassIdIn(com_support::ModulePath(module), name);
    return place->second;
}

}  // namespace

HRESULT CreateFrom(HMODULE module, const wchar_t* className, IDispatch** object) {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto getClassObject =
        reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    const HRESULT status = getClassObject(IdOfClass(module, className), IID_IClassFactory, factory.OutVoid());
    if (FAILED(status)) return status;
    return factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(object));
}

IDispatch* Stage::Object(const wchar_t* className) {
    if (!mObject) {
        const HRESULT status = CreateFrom(mModule, className, mObject.Out());
        if (FAILED(status)) Note(Narrow(className), status);
    }
    return mObject.Get();
}

ComPtr<IDispatch> Stage::Another(const wchar_t* className) {
    ComPtr<IDispatch> made;
    const HRESULT status = CreateFrom(mModule, className, made.Out());
    Note(Narrow(className), status);
    return made;
}

Outcome Stage::Noted(const wchar_t* member, Outcome outcome) {
    SetErrorInfo(0, nullptr);
    const bool isRaised = outcome.status == DISP_E_EXCEPTION;
    mAnswers.push_back({Narrow(member), isRaised ? outcome.scode : outcome.status, TextOf(outcome.result),
                        Narrow(outcome.source), Narrow(outcome.description)});
    return outcome;
}

Outcome Stage::Call(IDispatch* object, const wchar_t* member, const std::vector<Var>& arguments) {
    return Noted(member, com_test::Call(object, member, arguments));
}

Outcome Stage::Get(IDispatch* object, const wchar_t* property, const std::vector<Var>& arguments) {
    return Noted(property, com_test::Get(object, property, arguments));
}

Outcome Stage::Let(IDispatch* object, const wchar_t* property, const Var& value) {
    return Noted(property, com_test::Let(object, property, value));
}

Outcome Stage::Set(IDispatch* object, const wchar_t* property, const Var& value) {
    return Noted(property, com_test::Set(object, property, value));
}

}  // namespace kwo::com_test
