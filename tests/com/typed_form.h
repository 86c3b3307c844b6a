#pragma once

#include <olectl.h>

#include <functional>
#include <string>
#include <vector>

#include "com_test.h"

namespace kwo::com_test {

/// What the compiler takes for a SHORT.
struct Boolean {
    VARIANT_BOOL value;
};

/// What it takes for a LONG.
struct Status {
    SCODE value;
};

/// What the system's type library names: an alias of a truth value, and the interface of an object.
struct CancelBool {
    OLE_CANCELBOOL value;
};
struct INamedDispatch : IDispatch {};

/// The automation type of a parameter of a C++ type; VT_USERDEFINED for one that has a name.
template <class T>
constexpr VARTYPE kTypeOf = VT_EMPTY;
template <>
inline constexpr VARTYPE kTypeOf<SHORT> = VT_I2;
template <>
inline constexpr VARTYPE kTypeOf<LONG> = VT_I4;
template <>
inline constexpr VARTYPE kTypeOf<LONGLONG> = VT_I8;
template <>
inline constexpr VARTYPE kTypeOf<BYTE> = VT_UI1;
template <>
inline constexpr VARTYPE kTypeOf<CHAR> = VT_I1;
template <>
inline constexpr VARTYPE kTypeOf<USHORT> = VT_UI2;
template <>
inline constexpr VARTYPE kTypeOf<ULONG> = VT_UI4;
template <>
inline constexpr VARTYPE kTypeOf<ULONGLONG> = VT_UI8;
template <>
inline constexpr VARTYPE kTypeOf<float> = VT_R4;
template <>
inline constexpr VARTYPE kTypeOf<double> = VT_R8;
template <>
inline constexpr VARTYPE kTypeOf<CY> = VT_CY;
template <>
inline constexpr VARTYPE kTypeOf<DECIMAL> = VT_DECIMAL;
template <>
inline constexpr VARTYPE kTypeOf<Boolean> = VT_BOOL;
template <>
inline constexpr VARTYPE kTypeOf<VARIANT> = VT_VARIANT;
template <>
inline constexpr VARTYPE kTypeOf<Status> = VT_ERROR;
template <>
inline constexpr VARTYPE kTypeOf<OLE_TRISTATE> = VT_USERDEFINED;
template <>
inline constexpr VARTYPE kTypeOf<CancelBool> = VT_USERDEFINED;
template <>
inline constexpr VARTYPE kTypeOf<INamedDispatch> = VT_USERDEFINED;

/// Its name in the system's type library.
template <class T>
constexpr const wchar_t* kNameOf = nullptr;
template <>
inline constexpr const wchar_t* kNameOf<OLE_TRISTATE> = L"OLE_TRISTATE";
template <>
inline constexpr const wchar_t* kNameOf<CancelBool> = L"OLE_CANCELBOOL";
template <>
inline constexpr const wchar_t* kNameOf<INamedDispatch> = L"IDispatch";

/// A parameter's type, behind so many pointers.
struct Parameter {
    VARTYPE type = VT_EMPTY;
    const wchar_t* name = nullptr;
    int pointers = 0;
    bool isWritten = false;

    constexpr Parameter BehindAPointer() const { return {type, name, pointers + 1, true}; }
};
template <class T>
inline constexpr Parameter kParameter = {kTypeOf<T>, kNameOf<T>, 0, false};
template <class T>
inline constexpr Parameter kParameter<T*> = kParameter<T>.BehindAPointer();
template <>
inline constexpr Parameter kParameter<IDispatch*> = {VT_DISPATCH, nullptr, 0, false};
template <>
inline constexpr Parameter kParameter<INamedDispatch*> = {VT_USERDEFINED, kNameOf<INamedDispatch>, 1, false};

/// The description of an interface with one method behind those of IDispatch.
ComPtr<ITypeInfo> DescribeMethod(const std::wstring& name, const std::vector<Parameter>& parameters);

template <class... Parameters>
struct MethodSlots : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Run(Parameters... parameters) = 0;
};

/// A form of a compiled host with one procedure, whose parameters have types: late-bound calls reach it through its
/// type information, which refuses what does not fit and converts what does. On the test's stack.
template <class... Parameters>
class TypedForm : public MethodSlots<Parameters...> {
public:
    using Procedure = std::function<HRESULT(Parameters...)>;

    TypedForm(const std::wstring& name, Procedure procedure)
        : mProcedure(std::move(procedure)), mInfo(DescribeMethod(name, {kParameter<Parameters>...})) {}
    virtual ~TypedForm() = default;
    TypedForm(const TypedForm&) = delete;
    TypedForm& operator=(const TypedForm&) = delete;

    STDMETHODIMP Run(Parameters... parameters) override {
        ++runs;
        return mProcedure(parameters...);
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
        *object = known ? static_cast<IDispatch*>(this) : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = tellsTypes ? 1 : 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = tellsTypes ? mInfo.Get() : nullptr;
        if (*info == nullptr) return DISP_E_BADINDEX;
        (*info)->AddRef();
        return S_OK;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return DispGetIDsOfNames(mInfo.Get(), names, count, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                        UINT* bad) override {
        ++calls;
        return DispInvoke(static_cast<IDispatch*>(this), mInfo.Get(), id, flags, parameters, result, info, bad);
    }

    int calls = 0;  ///< with whatever types
    int runs = 0;
    bool tellsTypes = true;
    ULONG references = 0;

private:
    Procedure mProcedure;
    ComPtr<ITypeInfo> mInfo;
};

}  // namespace kwo::com_test
