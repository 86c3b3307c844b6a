#include "com/server/invoke.h"

#include <algorithm>
#include <memory>

#include "com/server/argument.h"
#include "com/server/error_report.h"
#include "com_support/exception_info.h"
#include "com_support/variant_references.h"

namespace kwo::com {

namespace {

constexpr WORD kPuts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

/// If a client sends both kinds of assignment, the value decides.
WORD ChosenFlags(WORD flags, const DISPPARAMS& arguments) {
    if ((flags & kPuts) != kPuts || arguments.cArgs == 0) return flags;
    const VARIANT* const value = com_support::Innermost(&arguments.rgvarg[0]);
    const VARTYPE base = value != nullptr ? value->vt & ~VT_BYREF : VT_EMPTY;
    return base == VT_DISPATCH || base == VT_UNKNOWN ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
}

/// The arguments of one call, in the order of the member's parameters.
class ArgumentFrame {
public:
    ArgumentFrame(const DispatchMember& member, DISPPARAMS& arguments, LCID locale)
        : mMember(member), mArguments(arguments), mLocale(locale) {}
    ~ArgumentFrame() {
        // In the order of the parameters: releasing an object runs code of the caller.
        for (std::size_t at = 0; at < mMade; ++at)
            std::destroy_at(&mPassed[at]);
    }
    ArgumentFrame(const ArgumentFrame&) = delete;
    ArgumentFrame& operator=(const ArgumentFrame&) = delete;

    HRESULT Prepare(UINT* badArgument) {
        const HRESULT matched = Match(badArgument);
        if (FAILED(matched)) return matched;
        for (const Parameter& parameter : mMember.parameters) {
            VARIANT* const source = mSources[mMade];
            void*& pointer = mPointers[mMade];
            PassedArgument& passed = *std::construct_at(&mPassed[mMade]);
            ++mMade;
            const HRESULT prepared = passed.Prepare(parameter, source, mLocale);
            if (FAILED(prepared)) {
                if (source == nullptr) return mArguments.cNamedArgs == 0 ? DISP_E_BADPARAMCOUNT : prepared;
                return Bad(prepared, source, badArgument);
            }
            pointer = passed.Value();
        }
        return S_OK;
    }

    void* const* Pointers(void* result) {
        mPointers[mMade] = result;
        return mPointers;
    }

    /// Writes all or, if one of them does not fit its variable, none.
    HRESULT WriteBack(UINT* badArgument) {
        for (std::size_t at = 0; at < mMade; ++at) {
            const HRESULT converted = mPassed[at].ConvertBack(mLocale);
            if (FAILED(converted)) return Bad(converted, mSources[at], badArgument);
        }
        for (std::size_t at = 0; at < mMade; ++at)
            mPassed[at].WriteBack();
        return S_OK;
    }

    /// After a call that failed: writes what has changed and fits. The failure of the call is the one that counts.
    void WriteBackWhatFits() {
        for (std::size_t at = 0; at < mMade; ++at) {
            PassedArgument& passed = mPassed[at];
            if (passed.CanCompare() && SUCCEEDED(passed.ConvertBack(mLocale))) passed.WriteBack();
        }
    }

private:
    HRESULT Bad(HRESULT result, const VARIANT* source, UINT* badArgument) const {
        if (badArgument != nullptr) *badArgument = static_cast<UINT>(source - mArguments.rgvarg);
        return result;
    }

    /// Finds the caller's argument for each parameter; null if it was left out.
    HRESULT Match(UINT* badArgument) {
        const std::size_t count = mMember.parameters.size();
        if (mArguments.cArgs > count || mArguments.cNamedArgs > mArguments.cArgs) return DISP_E_BADPARAMCOUNT;
        for (std::size_t at = 0; at < count; ++at)
            mSources[at] = nullptr;

        const UINT positional = mArguments.cArgs - mArguments.cNamedArgs;
        for (UINT at = 0; at < positional; ++at)
            mSources[at] = &mArguments.rgvarg[mArguments.cArgs - 1 - at];

        const bool isPut = (mMember.kind & kPuts) != 0;
        if (isPut && (mArguments.cNamedArgs == 0 || mArguments.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)) {
            return DISP_E_PARAMNOTOPTIONAL;
        }
        for (UINT named = 0; named < mArguments.cNamedArgs; ++named) {
            DISPID id = mArguments.rgdispidNamedArgs[named];
            if (isPut && id == DISPID_PROPERTYPUT) id = static_cast<DISPID>(count - 1);
            VARIANT* const source = &mArguments.rgvarg[named];
            if (id < 0 || static_cast<std::size_t>(id) >= count || mSources[id] != nullptr) {
                return Bad(DISP_E_PARAMNOTFOUND, source, badArgument);
            }
            mSources[id] = source;
        }
        return S_OK;
    }

    const DispatchMember& mMember;
    DISPPARAMS& mArguments;
    LCID mLocale;
    std::size_t mMade = 0;
    // Uninitialised on purpose: only the arguments that a member has are touched, and the first mMade of mPassed made.
    VARIANT* mSources[DispatchTable::kMostArguments];
    void* mPointers[DispatchTable::kMostArguments + 1];
    union {
        PassedArgument mPassed[DispatchTable::kMostArguments];
    };
};

HRESULT Called(const DispatchMember& member, void* interfacePointer, void* const* pointers, EXCEPINFO* exception) {
    const HRESULT called = member.thunk.call(interfacePointer, pointers);
    if (SUCCEEDED(called)) return S_OK;
    com_support::ExceptionInfo unwanted;
    FillExceptionInfo(called, exception != nullptr ? *exception : unwanted);
    return DISP_E_EXCEPTION;
}

void ReturnValue(VARIANT& value, VARTYPE type, VARIANT* result) {
    if (type != VT_VARIANT) value.vt = type;
    if (result != nullptr) {
        *result = value;
    } else {
        ::VariantClear(&value);
    }
}

bool IsValid(const DISPPARAMS* arguments) {
    return arguments != nullptr && (arguments->cArgs == 0 || arguments->rgvarg != nullptr) &&
           (arguments->cNamedArgs == 0 || arguments->rgdispidNamedArgs != nullptr);
}

/// True if the place for the result is an argument too, or what an argument refers to, as in `x = object.Member(x)`.
bool IsAnArgument(const VARIANT* place, const DISPPARAMS& arguments) {
    const auto* const first = reinterpret_cast<const char*>(place);
    const auto isThePlace = [&](const VARIANT& argument) {
        if (&argument == place) return true;
        if ((argument.vt & VT_BYREF) == 0) return false;
        const auto* const referred = static_cast<const char*>(argument.byref);
        return referred >= first && referred < first + sizeof *place;
    };
    return std::any_of(arguments.rgvarg, arguments.rgvarg + arguments.cArgs, [&](const VARIANT& argument) {
        return com_support::FirstReferred(&argument, isThePlace) != nullptr;
    });
}

/// Where a member writes its result.
void* ResultPlace(const DispatchMember& member, VARIANT& value) {
    value.vt = VT_EMPTY;
    value.llVal = 0;
    return member.resultType == VT_VARIANT ? static_cast<void*>(&value) : &value.llVal;
}

/// True for what most calls pass: every argument, each in its place and in the member's own type. `pointers` then are
/// what the member is called with, but for the result.
bool FitAsTheyAre(const DispatchMember& member, const DISPPARAMS& arguments, const VARIANT* result, void** pointers) {
    const std::size_t count = member.parameters.size();
    if (arguments.cArgs != count) return false;
    if (count == 0) return true;
    const bool isPut = (member.kind & kPuts) != 0;
    if (arguments.cNamedArgs != (isPut ? 1U : 0U)) return false;
    if (isPut && arguments.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) return false;
    for (std::size_t at = 0; at < count; ++at) {
        VARIANT& argument = arguments.rgvarg[count - 1 - at];
        if (&argument == result || !PassedArgument::IsSimple(member.parameters[at], argument)) return false;
        pointers[at] = &argument.llVal;
    }
    return true;
}

/// Calls a member that needs neither conversions nor a copy of an argument. No code of the caller runs but what the
/// member calls, and the members keep their object alive themselves.
HRESULT InvokeAsItIs(const DispatchMember& member, void* interfacePointer, void** pointers, VARIANT* result,
                     EXCEPINFO* exception) {
    VARIANT unwanted;
    // In its place at once: copying what has just been written in parts is slow.
    VARIANT& value = result != nullptr ? *result : unwanted;
    pointers[member.parameters.size()] = ResultPlace(member, value);
    const HRESULT called = Called(member, interfacePointer, pointers, exception);
    if (FAILED(called)) {
        value.vt = VT_EMPTY;
    } else if (member.resultType != VT_EMPTY) {
        if (member.resultType != VT_VARIANT) value.vt = member.resultType;
        if (result == nullptr) ::VariantClear(&value);
    }
    return called;
}

/// Serves every call. A null `member` is one that the class lacks.
/// It is not inlined, because the short way would then pay for the frame.
[[gnu::noinline]] HRESULT InvokeConverted(const DispatchMember* member, void* interfacePointer, LCID locale,
                                          DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                          UINT* badArgument) {
    const bool isValid = IsValid(arguments);
    // The place for the result holds nothing yet, unless it is an argument too: then it keeps its value until there is
    // a result, and that value is freed afterwards.
    const bool isShared = result != nullptr && isValid && IsAnArgument(result, *arguments);
    if (result != nullptr && !isShared) result->vt = VT_EMPTY;
    if (!isValid) return E_INVALIDARG;
    if (member == nullptr) return DISP_E_MEMBERNOTFOUND;

    // Converting arguments may call objects of the host, which may run any code.
    const ComPtr<IUnknown> hold(static_cast<IUnknown*>(interfacePointer));
    ArgumentFrame frame(*member, *arguments, locale);
    const HRESULT prepared = frame.Prepare(badArgument);
    if (FAILED(prepared)) return prepared;

    VARIANT value;
    const HRESULT called = Called(*member, interfacePointer, frame.Pointers(ResultPlace(*member, value)), exception);
    if (FAILED(called)) {
        frame.WriteBackWhatFits();
        return called;
    }

    const HRESULT written = frame.WriteBack(badArgument);
    if (SUCCEEDED(written) && isShared) ::VariantClear(result);
    if (member->resultType != VT_EMPTY) ReturnValue(value, member->resultType, SUCCEEDED(written) ? result : nullptr);
    return written;
}

}  // namespace

HRESULT InvokeMember(const DispatchTable& table, void* interfacePointer, DISPID id, LCID locale, WORD flags,
                     DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept {
    const DispatchMember* const member = IsValid(arguments) ? table.Find(id, ChosenFlags(flags, *arguments)) : nullptr;
    void* pointers[DispatchTable::kMostArguments + 1];
    if (member != nullptr && FitAsTheyAre(*member, *arguments, result, pointers)) {
        return InvokeAsItIs(*member, interfacePointer, pointers, result, exception);
    }
    return InvokeConverted(member, interfacePointer, locale, arguments, result, exception, badArgument);
}

}  // namespace kwo::com
