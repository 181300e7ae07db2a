// The progress a final run reports to the host, from acquisition to the empty bar.
#include "ShellFixture.h"

#include "platform/Alert.h"

using namespace shelltest;

TEST(RunFilterProgress, FinalRunReportsAcquisitionRenderAndTheEnd) {
    auto host = MakeHost(RgbDocument(6, 3));
    AlertCapture alerts;
    ASSERT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), noErr);
    std::vector<std::pair<int32, int32>> calls;
    for (const auto& c : host->Progress()) calls.emplace_back(c.done, c.total);
    const std::vector<std::pair<int32, int32>> expected = {
        {0, 100},  {5, 100},  {10, 100},                                 // acquisition
        {0, 100},  {0, 100},  {0, 100},   {0, 100},  {0, 100}, {0, 100}, // wash 1's noise, a row each
        {0, 100},  {0, 100},  {0, 100},   {0, 100},  {0, 100}, {0, 100},
        {1, 100},  {3, 100},  {5, 100},   {6, 100},  // surface 1 smoothed
        {10, 100}, {10, 100}, {23, 100},  {36, 100}, // render: rows of the copy
        {50, 100}, {70, 100}, {100, 100}, {100, 0}}; // and the end: the bar empties
    EXPECT_EQ(calls, expected);
}
