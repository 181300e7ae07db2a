// Every test program runs with alerts recorded, not shown: a render without the texture
// library tells the user of each missing file, and under wine a real message box would
// wait for a click that never comes. Tests that look at alerts open their own capture.
#include "platform/Alert.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class AlertsCaptured : public ::testing::Environment {
public:
    void SetUp() override { capture_ = std::make_unique<AlertCapture>(); }
    void TearDown() override { capture_.reset(); }

private:
    std::unique_ptr<AlertCapture> capture_;
};

[[maybe_unused]] ::testing::Environment* const kAlertsCaptured =
    ::testing::AddGlobalTestEnvironment(new AlertsCaptured);

} // namespace
