#pragma once

#include "com_test.h"
#include "golden_members.h"

namespace kwo::com_test {

/// The type library embedded in the DLL, read from the file without registering anything.
ComPtr<ITypeLib> TypeLibraryOfTheDll();

/// What the type library says, in the words of the hand-typed list: one line per accessor, in slot order.
std::vector<std::string> DumpInterface(ITypeInfo* dispatchInfo);
std::vector<std::string> DumpEvents(ITypeInfo* dispatchInfo);
std::vector<std::string> DumpEnumeration(ITypeInfo* info);
/// "KWOTimer creatable default _KWOTimer source __KWOTimer"
std::string DumpClass(ITypeInfo* info);

/// The description of one type of the library by its name; null when there is none.
ComPtr<ITypeInfo> TypeInfoOf(ITypeLib* library, const std::wstring& name);
std::string NameOf(ITypeInfo* info);

/// The interface with the slots behind a dual interface's dispatch view.
ComPtr<ITypeInfo> SlotView(ITypeInfo* dispatchInfo);

/// Type attributes, given back at the end.
class TypeAttributes {
public:
    explicit TypeAttributes(ITypeInfo* info) : mInfo(info) { info->GetTypeAttr(&mAttributes); }
    TypeAttributes(const TypeAttributes&) = delete;
    TypeAttributes& operator=(const TypeAttributes&) = delete;
    ~TypeAttributes() {
        if (mAttributes != nullptr) mInfo->ReleaseTypeAttr(mAttributes);
    }
    const TYPEATTR* operator->() const { return mAttributes; }

private:
    ITypeInfo* mInfo;
    TYPEATTR* mAttributes = nullptr;
};

/// One function description, given back at the end.
class Function {
public:
    Function(ITypeInfo* info, UINT index) : mInfo(info) { info->GetFuncDesc(index, &mDescription); }
    Function(const Function&) = delete;
    Function& operator=(const Function&) = delete;
    ~Function() {
        if (mDescription != nullptr) mInfo->ReleaseFuncDesc(mDescription);
    }
    const FUNCDESC* operator->() const { return mDescription; }

    bool IsPut() const { return (mDescription->invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0; }
    /// True when the last parameter is the result.
    bool HasResult() const;
    /// The arguments a caller writes: without the result and, for a put, without the new value.
    UINT ArgumentCount() const;
    /// The method's name first, then the arguments'.
    std::vector<std::string> Names() const;

private:
    ITypeInfo* mInfo;
    FUNCDESC* mDescription = nullptr;
};

}  // namespace kwo::com_test
