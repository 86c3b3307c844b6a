#include "com/class_objects.h"
#include "com/component_object.h"
#include "com/host_objects.h"
#include "com/server/com_values.h"
#include "component/component.h"
#include "kwoutil.h"
#include "sysinfo/form_placement.h"
#include "sysinfo/utility.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kUtilityMembers[] = {
    Member<&_KWOUtility::KWO_FindInPath>,
    Member<&_KWOUtility::KWO_CenterForm>,
    Member<&_KWOUtility::KWO_SetFormPosition>,
    Member<&_KWOUtility::KWO_LoadApp>,
    Member<&_KWOUtility::KWO_Pause>,
    Member<&_KWOUtility::KWO_SystemDir>,
    Member<&_KWOUtility::KWO_WindowsDir>,
    Member<&_KWOUtility::get_KWO_IsWin32>,
    Member<&_KWOUtility::get_KWO_IsWinNT>,
    Member<&_KWOUtility::get_KWO_WinMajorVersion>,
    Member<&_KWOUtility::get_KWO_WinMinorVersion>,
};

ClassInfo& UtilityInfo() {
    static constinit ClassInfo info(CLSID_KWOUtility, IID__KWOUtility, nullptr, u"KWOUtility", kUtilityMembers);
    return info;
}

/// An argument of a member that ignores what it cannot use.
platform::Variant UsableValue(const VARIANT* argument) {
    try {
        return OptionalValue(argument);
    } catch (const platform::ComponentError&) {
        return platform::Null{};
    }
}

class UtilityObject final : public ComponentObject<_KWOUtility> {
public:
    UtilityObject() : ComponentObject(UtilityInfo()), mUtility(Component()), mPlacement(Component().platform) {}

    STDMETHODIMP KWO_FindInPath(BSTR* fileName, BSTR* found) override {
        return Run(u".KWO_FindInPath", [&] {
            BSTR& answer = Required(found);
            answer = NewString(mUtility.KWO_FindInPath(ToText(Required(fileName))));
        });
    }
    STDMETHODIMP KWO_CenterForm(IDispatch** activeForm, VARIANT* parentForm) override {
        return Run(u".KWO_CenterForm", [&] {
            mPlacement.KWO_CenterForm(platform::windows::MakeHostObject(Required(activeForm)), UsableValue(parentForm));
        });
    }
    STDMETHODIMP KWO_SetFormPosition(IDispatch** formObj, VARIANT* windowState, VARIANT* left, VARIANT* top,
                                     VARIANT* width, VARIANT* height, VARIANT* parentForm) override {
        return Run(u".KWO_SetFormPosition", [&] {
            mPlacement.KWO_SetFormPosition(platform::windows::MakeHostObject(Required(formObj)),
                                           {UsableValue(windowState), UsableValue(left), UsableValue(top),
                                            UsableValue(width), UsableValue(height)},
                                           UsableValue(parentForm));
        });
    }
    STDMETHODIMP KWO_LoadApp(BSTR* appPath, BSTR* appProg, BSTR* appParms, short* winMode, BSTR* appName,
                             LONG* taskId) override {
        return Run(u".KWO_LoadApp", [&] {
            LONG& answer = Required(taskId);
            answer = mUtility.KWO_LoadApp(ToText(Required(appPath)), ToText(Required(appProg)),
                                          ToText(Required(appParms)), Required(winMode), ToText(Required(appName)));
        });
    }
    STDMETHODIMP KWO_Pause(short* seconds) override {
        return Run(u".KWO_Pause", [&] { mUtility.KWO_Pause(Required(seconds)); });
    }
    STDMETHODIMP KWO_SystemDir(VARIANT* slashAtEnd, BSTR* directory) override {
        return Run(u".KWO_SystemDir",
                   [&] { Directory(&sysinfo::KWOUtility::KWO_SystemDir, slashAtEnd, Required(directory)); });
    }
    STDMETHODIMP KWO_WindowsDir(VARIANT* slashAtEnd, BSTR* directory) override {
        return Run(u".KWO_WindowsDir",
                   [&] { Directory(&sysinfo::KWOUtility::KWO_WindowsDir, slashAtEnd, Required(directory)); });
    }
    STDMETHODIMP get_KWO_IsWin32(VARIANT_BOOL* value) override {
        return Run(u".KWO_IsWin32 (Get)", [&] { Required(value) = VariantBool(mUtility.KWO_IsWin32()); });
    }
    STDMETHODIMP get_KWO_IsWinNT(VARIANT_BOOL* value) override {
        return Run(u".KWO_IsWinNT (Get)", [&] { Required(value) = VariantBool(mUtility.KWO_IsWinNT()); });
    }
    STDMETHODIMP get_KWO_WinMajorVersion(short* value) override {
        return Run(u".KWO_WinMajorVersion (Get)", [&] { Required(value) = mUtility.KWO_WinMajorVersion(); });
    }
    STDMETHODIMP get_KWO_WinMinorVersion(short* value) override {
        return Run(u".KWO_WinMinorVersion (Get)", [&] { Required(value) = mUtility.KWO_WinMinorVersion(); });
    }

private:
    using Query = Text (sysinfo::KWOUtility::*)(platform::Variant& slashAtEnd);

    void Directory(Query query, VARIANT* slashAtEnd, BSTR& answer) {
        platform::Variant wanted = OptionalValue(slashAtEnd);
        const bool wasMissing = platform::IsMissing(wanted);
        const Text directory = (mUtility.*query)(wanted);
        if (wasMissing && slashAtEnd != nullptr) FillIn(*slashAtEnd, platform::windows::ToVariant(wanted));
        answer = NewString(directory);
    }

    sysinfo::KWOUtility mUtility;
    sysinfo::FormPlacement mPlacement;
};

}  // namespace

ClassEntry UtilityClass() {
    return {CLSID_KWOUtility, u"KWOUtility", &Make<UtilityObject>};
}

}  // namespace kwo::com
