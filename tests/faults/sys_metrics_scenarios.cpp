#include <string>

#include "scenario.h"
#include "sysinfo/sys_metrics.h"

namespace kwo::fault_tests {

namespace {

using sysinfo::KWOSysMetrics;
using sysinfo::Metric;

struct MetricsStage : Stage {
    MetricsStage() {
        for (int index = 0; index < 100; ++index)
            desktop.metrics.values[index] = 100 + index;
        object.emplace(*component);
    }
    void Release() override { object.reset(); }
    std::string State() override { return std::to_string(object ? object->ScaleMode() : 0); }

    std::optional<KWOSysMetrics> object;
};

Scenario Dimension(const char* member, Metric metric) {
    return {std::string("TheSize") + member,
            {std::string("KWOSysMetrics.") + member},
            Fresh<MetricsStage>(),
            On<MetricsStage>([metric](MetricsStage& stage) {
                const Variant twips = Text(u"1");
                return std::to_string(Member([&] { return stage.object->Dimension(metric, twips); }));
            }),
            {{"GetSystemMetrics", Answers("0")}, {"VariantChangeType", Raises()}}};
}

Scenario Flag(const char* member, Metric metric) {
    return {std::string("TheFlag") + member,
            {std::string("KWOSysMetrics.") + member},
            Fresh<MetricsStage>(),
            On<MetricsStage>(
                [metric](MetricsStage& stage) { return Shown(Member([&] { return stage.object->Flag(metric); })); }),
            {{"GetSystemMetrics", Answers("False")}}};
}

Scenario Number(const char* member, Metric metric, bool isShort) {
    return {std::string("TheNumber") + member,
            {std::string("KWOSysMetrics.") + member},
            Fresh<MetricsStage>(),
            On<MetricsStage>([metric, isShort](MetricsStage& stage) {
                return std::to_string(Member(
                    [&] { return isShort ? std::int32_t{stage.object->Short(metric)} : stage.object->Long(metric); }));
            }),
            {{"GetSystemMetrics", Answers("0")}}};
}

}  // namespace

std::vector<Scenario> SysMetricsScenarios() {
    std::vector<Scenario> scenarios = {
        {"TheScaleModeIsSet",
         {"KWOSysMetrics.get ScaleMode", "KWOSysMetrics.let ScaleMode"},
         Fresh<MetricsStage>(),
         On<MetricsStage>([](MetricsStage& stage) {
             Member([&] { stage.object->SetScaleMode(1); });
             return std::to_string(stage.object->ScaleMode());
         }),
         {}},
        {"AMetricsObjectIsCreated",
         {},
         Fresh<MetricsStage>(),
         On<MetricsStage>([](MetricsStage& stage) {
             Member([&] { stage.object.emplace(*stage.component); });
             return "created";
         }),
         {}},
    };
#define DIMENSION(order, member, index, constant, axis) scenarios.push_back(Dimension(#member, Metric::member));
#define FLAG(order, member, index, constant) scenarios.push_back(Flag(#member, Metric::member));
#define NUMBER(order, type, member, index, constant) \
    scenarios.push_back(Number(#member, Metric::member, std::string_view(#type) == "short"));
#include "platform/metrics.def"
#undef DIMENSION
#undef FLAG
#undef NUMBER
    return scenarios;
}

}  // namespace kwo::fault_tests
