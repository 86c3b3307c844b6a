#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"
#include "platform/windows/call_failure.h"
#include "platform/windows/variant_bridge.h"
#include "registry/registry.h"

namespace kwo::com {

namespace {

constexpr std::uint8_t kFirstIsHandle = 1;

constexpr MemberThunk kRegistryMembers[] = {
    Member<&_KWORegistry::KWO_RegGetValueEx, kFirstIsHandle>,  Member<&_KWORegistry::KWO_RegDeleteKey, kFirstIsHandle>,
    Member<&_KWORegistry::KWO_RegDeleteValue, kFirstIsHandle>, Member<&_KWORegistry::KWO_RegCreateKey, kFirstIsHandle>,
    Member<&_KWORegistry::KWO_RegSetValue, kFirstIsHandle>,    Member<&_KWORegistry::KWO_RegGetValue, kFirstIsHandle>,
};

ClassInfo& RegistryInfo() {
    static constinit ClassInfo info(CLSID_KWORegistry, IID__KWORegistry, nullptr, u"KWORegistry", kRegistryMembers);
    return info;
}

class RegistryObject final : public ComponentObject<_KWORegistry> {
public:
    RegistryObject() : ComponentObject(RegistryInfo()), mRegistry(Component()) {}

    STDMETHODIMP KWO_RegGetValueEx(LONG* key, BSTR* valueName, VARIANT defaultValue, VARIANT* result) override {
        return Run(u".KWO_RegGetValueEx", [&] {
            VARIANT& found = Required(result);
            const platform::Handle openKey = Required(key);
            const Text name = ToText(Required(valueName));
            const auto value = mRegistry.KWO_RegGetValueEx(openKey, name, platform::windows::FromVariant(defaultValue));
            found = value ? platform::windows::ToVariant(*value) : CopyOf(defaultValue);
        });
    }
    STDMETHODIMP KWO_RegDeleteKey(LONG* root, BSTR* keyName, LONG* status) override {
        return Run(u".KWO_RegDeleteKey", [&] {
            LONG& answer = Required(status);
            answer = mRegistry.KWO_RegDeleteKey(Required(root), ToText(Required(keyName)));
        });
    }
    STDMETHODIMP KWO_RegDeleteValue(LONG* root, BSTR* keyName, BSTR* valueName, LONG* status) override {
        return Run(u".KWO_RegDeleteValue", [&] {
            LONG& answer = Required(status);
            answer =
                mRegistry.KWO_RegDeleteValue(Required(root), ToText(Required(keyName)), ToText(Required(valueName)));
        });
    }
    STDMETHODIMP KWO_RegCreateKey(LONG* root, BSTR* keyName, LONG* key) override {
        return Run(u".KWO_RegCreateKey", [&] {
            LONG& answer = Required(key);
            answer = mRegistry.KWO_RegCreateKey(Required(root), ToText(Required(keyName)));
        });
    }
    STDMETHODIMP KWO_RegSetValue(LONG* root, BSTR* keyName, BSTR* valueName, BSTR* value, LONG* status) override {
        return Run(u".KWO_RegSetValue", [&] {
            LONG& answer = Required(status);
            answer = mRegistry.KWO_RegSetValue(Required(root), ToText(Required(keyName)), ToText(Required(valueName)),
                                               ToText(Required(value)));
        });
    }
    STDMETHODIMP KWO_RegGetValue(LONG* root, BSTR* keyName, BSTR* valueName, BSTR* value, LONG* status) override {
        return Run(u".KWO_RegGetValue", [&] {
            BSTR& returned = Required(value);
            LONG& answer = Required(status);
            Text text;
            answer =
                mRegistry.KWO_RegGetValue(Required(root), ToText(Required(keyName)), ToText(Required(valueName)), text);
            Replace(returned, text);
        });
    }

private:
    /// The value itself, whatever its type.
    static VARIANT CopyOf(VARIANT& value) {
        com_support::OwnedVariant copy;
        const HRESULT result = ::VariantCopyInd(&copy, &value);
        if (FAILED(result)) platform::windows::RaiseFailure(result);
        return copy.Detach();
    }

    registry::KWORegistry mRegistry;
};

}  // namespace

ClassEntry RegistryClass() {
    return {CLSID_KWORegistry, u"KWORegistry", &Make<RegistryObject>};
}

}  // namespace kwo::com
