#include <cmath>

#include "contract_test.h"
#include "platform/system_metrics.h"

namespace kwo::contract {
namespace {

constexpr std::int32_t kScreenWidth = 0;
constexpr std::int32_t kScreenHeight = 1;
constexpr std::int32_t kFullScreenWindowWidth = 16;
constexpr std::int32_t kFullScreenWindowHeight = 17;

class SystemMetricsContract : public ContractTest {
protected:
    platform::SystemMetrics& metrics = platform().metrics;
};

TEST_F(SystemMetricsContract, SizesAreInPixels) {
    platform::Screen& screen = platform().screen;
    EXPECT_GE(metrics.Metric(kScreenWidth), 640);
    EXPECT_GE(metrics.Metric(kScreenHeight), 480);
    EXPECT_EQ(metrics.Metric(kScreenWidth) * std::nearbyint(screen.TwipsPerPixelX()), screen.Width());
    EXPECT_EQ(metrics.Metric(kScreenHeight) * std::nearbyint(screen.TwipsPerPixelY()), screen.Height());
}

TEST_F(SystemMetricsContract, EachIndexHasAValueOfItsOwn) {
    const std::int32_t width = metrics.Metric(kFullScreenWindowWidth);
    const std::int32_t height = metrics.Metric(kFullScreenWindowHeight);
    EXPECT_GT(width, 0);
    EXPECT_LE(width, metrics.Metric(kScreenWidth));
    EXPECT_GT(height, 0);
    EXPECT_NE(height, width);
    EXPECT_NE(height, metrics.Metric(kScreenHeight)) << "without the title bar";
}

TEST_F(SystemMetricsContract, AnIndexThatNobodyKnowsIsZero) {
    for (const std::int32_t index : {-1, 999, 0x7FFF'FFFF})
        EXPECT_EQ(metrics.Metric(index), 0) << index;
}

}  // namespace
}  // namespace kwo::contract
