#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"
#include "platform/windows/variant_bridge.h"
#include "sysinfo/sys_metrics.h"

namespace kwo::com {

namespace {

using sysinfo::Metric;

constexpr MemberThunk kSysMetricsMembers[] = {
    Member<&_KWOSysMetrics::get_ScaleMode>,
    Member<&_KWOSysMetrics::put_ScaleMode>,
#define DIMENSION(order, member, index, constant, axis) Member<&_KWOSysMetrics::member>,
#define FLAG(order, member, index, constant) Member<&_KWOSysMetrics::member>,
#define NUMBER(order, type, member, index, constant) Member<&_KWOSysMetrics::member>,
#include "platform/metrics.def"
#undef DIMENSION
#undef FLAG
#undef NUMBER
};

ClassInfo& SysMetricsInfo() {
    static constinit ClassInfo info(CLSID_KWOSysMetrics, IID__KWOSysMetrics, nullptr, u"KWOSysMetrics",
                                    kSysMetricsMembers);
    return info;
}

class SysMetricsObject final : public ComponentObject<_KWOSysMetrics> {
public:
    SysMetricsObject() : ComponentObject(SysMetricsInfo()), mMetrics(Component()) {}

    STDMETHODIMP get_ScaleMode(short* value) override {
        return Run(u".ScaleMode (Get)", [&] { Required(value) = mMetrics.ScaleMode(); });
    }
    STDMETHODIMP put_ScaleMode(short* value) override {
        return Run(u".ScaleMode (Let)", [&] { mMetrics.SetScaleMode(Required(value)); });
    }

#define DIMENSION(order, member, index, constant, axis)                   \
    STDMETHODIMP member(VARIANT* scaleMode, LONG* value) override {       \
        return Dimension(u"." #member, Metric::member, scaleMode, value); \
    }
#define FLAG(order, member, index, constant)              \
    STDMETHODIMP member(VARIANT_BOOL* value) override {   \
        return Flag(u"." #member, Metric::member, value); \
    }
#define NUMBER(order, type, member, index, constant)        \
    STDMETHODIMP member(type* value) override {             \
        return Number(u"." #member, Metric::member, value); \
    }
#include "platform/metrics.def"
#undef DIMENSION
#undef FLAG
#undef NUMBER

private:
    HRESULT Dimension(const char16_t* member, Metric metric, const VARIANT* scaleMode, LONG* value) {
        return Run(member, [&] {
            LONG& answer = Required(value);
            const platform::Variant mode =
                scaleMode != nullptr ? platform::windows::FromVariant(*scaleMode) : platform::Missing();
            answer = mMetrics.Dimension(metric, mode);
        });
    }
    HRESULT Flag(const char16_t* member, Metric metric, VARIANT_BOOL* value) {
        return Run(member, [&] { Required(value) = VariantBool(mMetrics.Flag(metric)); });
    }
    HRESULT Number(const char16_t* member, Metric metric, short* value) {
        return Run(member, [&] { Required(value) = mMetrics.Short(metric); });
    }
    HRESULT Number(const char16_t* member, Metric metric, LONG* value) {
        return Run(member, [&] { Required(value) = mMetrics.Long(metric); });
    }

    sysinfo::KWOSysMetrics mMetrics;
};

}  // namespace

ClassEntry SysMetricsClass() {
    return {CLSID_KWOSysMetrics, u"KWOSysMetrics", &Make<SysMetricsObject>};
}

}  // namespace kwo::com
