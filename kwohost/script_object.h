#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "com_values.h"

namespace kwohost {

/// The source of the errors that this program itself raises.
inline constexpr wchar_t kErrorSource[] = L"kwohost";

/// The arguments of one call in the order of the script, and its result.
///
///     AddMethod(L"Sleep", 1, 1, [this](Call& call) { Sleep(call.Whole(0)); });
///
/// An index must be below Count unless Has says so first. What a member raises reaches the script.
class Call {
public:
    /// Both must outlive the object. `result` may be null: nobody wants it then.
    Call(const DISPPARAMS& params, VARIANT* result) : mParams(params), mResult(result) {}

    /// The number of arguments that the script passed. Indexes count from 0.
    int Count() const { return static_cast<int>(mParams.cArgs); }
    /// False for an argument that was left out, in the middle or at the end. `index` may be beyond the last argument.
    bool Has(int index) const;
    /// By value, whatever reference the script passed. Raises what Copied raises.
    OwnedVariant Value(int index) const;
    /// The argument as a text, number or truth value, by the rules of automation in the user's locale; raises what the
    /// conversion returns, mostly error 13 or 6.
    std::wstring Text(int index) const;
    LONG Whole(int index) const;
    double Number(int index) const;
    bool Truth(int index) const;
    /// An argument that must be an object. Raises 424 if it is not one, 91 for the null object.
    ComPtr<IDispatch> Object(int index) const;

    /// Sets the result. The last one set counts. Nothing happens if the caller wants none.
    void ReturnText(std::wstring_view text);
    void ReturnWhole(LONG number);
    /// As a number of single precision; raises error 6 for a larger one.
    void ReturnSingle(double number);
    void ReturnTruth(bool value);
    /// Sets an object as the result; null is the null object.
    void ReturnObject(ComPtr<IDispatch> object);
    void ReturnUnknown(ComPtr<IUnknown> object);

    /// Where the caller numbers the argument that `Value`, `Text`, `Whole` or `Object` looked at last.
    /// For the error of a conversion that fails.
    UINT LastArgument() const { return mLast; }

private:
    const VARIANT& Raw(int index) const;
    OwnedVariant Converted(int index, VARTYPE type) const;
    void ReturnValue(OwnedVariant value);

    const DISPPARAMS& mParams;
    VARIANT* mResult;
    mutable UINT mLast = 0;
};

/// An object for scripts: a table of names and what each does.
/// A class adds its members in its constructor.
///
///     AddProperty(L"Name", [this](Call& call) { call.ReturnText(mName); });
///
/// Names are found whatever their case; a wrong name, a wrong number of arguments and a conversion that fails give the
/// standard automation codes; a ScriptFailure becomes the error that the script sees. The object lives until a call of
/// it returns.
class ScriptObject : public ComObject<IDispatch> {
public:
    /// The object as a class of this program; null for any other object, and for null. The caller gets no reference.
    template <class Object>
    static Object* Own(IDispatch* object) {
        return dynamic_cast<Object*>(OwnObject(object));
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override;
    /// DISP_E_UNKNOWNNAME also for names of arguments: no member takes named ones.
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* exception, UINT* badArgument) override;

protected:
    /// What a member does. It may raise.
    using Body = std::function<void(Call&)>;
    /// For `most`: no limit.
    static constexpr int kAnyNumber = -1;

    /// A method with `fewest` to `most` arguments. `name` must be a literal.
    void AddMethod(const wchar_t* name, int fewest, int most, Body body);
    /// A property that is only read, with a fixed number of arguments.
    void AddProperty(const wchar_t* name, Body body, int arguments = 0);
    /// A property that can be assigned as well, by value or by reference; the value is the only argument of `put`.
    void AddVariable(const wchar_t* name, Body get, Body put);
    /// A variable with an index: the first argument of both. The value is the second one of `put`.
    void AddIndexed(const wchar_t* name, Body get, Body put);
    /// The member that answers when the object itself is used as a value or called. It must have been added.
    void SetDefault(const wchar_t* name);
    /// Serves `For Each`; the body returns an IEnumVARIANT, by ReturnUnknown.
    void SetEnumerator(Body body);

    bool AlsoAnswers(REFIID iid) const override;
    /// What an object does with members that it does not have itself. Nothing by default.
    virtual DISPID IdOfOther(std::wstring_view) { return DISPID_UNKNOWN; }
    virtual HRESULT InvokeOther(DISPID, DISPPARAMS&, VARIANT*, EXCEPINFO*) { return DISP_E_MEMBERNOTFOUND; }
    /// Raises the error of every member while none of them can be used. Runs before each of them.
    virtual void CheckUsable() const {}
    /// Describes the members so far as a type of that name: from now on GetTypeInfo has an answer.
    /// Does nothing if the system cannot.
    void Describe(const wchar_t* typeName);

private:
    /// Asks by an interface that no other program knows.
    static ScriptObject* OwnObject(IDispatch* object);

    /// One member. `put` is empty for what cannot be assigned.
    struct Member {
        DISPID id;
        const wchar_t* name;
        bool isMethod;
        int fewest;
        int most;
        Body body;
        Body put;
    };

    /// Null if there is none.
    const Member* Find(std::wstring_view name) const;
    const Member* Find(DISPID id) const;
    HRESULT InvokeMember(DISPID id, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                         UINT* badArgument);
    void CallMember(const Member& member, const DISPPARAMS& params, VARIANT* result, UINT* badArgument) const;
    /// A property with arguments that it does not take: they are for the object that it returns.
    HRESULT CallDefaultOf(const Member& property, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                          UINT* badArgument) const;

    /// For both kinds of assignment. DISP_E_MEMBERNOTFOUND for a member that is only read.
    HRESULT Assign(const Member& member, const DISPPARAMS& params, UINT* badArgument) const;
    void RunBody(const Body& body, const DISPPARAMS& params, VARIANT* result, UINT* badArgument) const;

    std::vector<Member> mMembers;
    /// Null until Describe.
    ComPtr<ITypeInfo> mType;
    /// DISPID_UNKNOWN while no member is the default.
    DISPID mDefault = DISPID_UNKNOWN;
};

}  // namespace kwohost
