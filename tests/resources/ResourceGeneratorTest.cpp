#include "ResourceWriter.h"
#include "common/ResourceChecks.h"

#include <gtest/gtest.h>

TEST(ResourceGenerator, PiplDescribesTheFilter) {
    const std::vector<uint8_t> pipl = BuildPipl();
    CheckPiplResource(pipl.data(), pipl.size());
}

TEST(ResourceGenerator, TerminologyNamesTheScriptableParameters) {
    const std::vector<uint8_t> aete = BuildTerminology();
    CheckTerminologyResource(aete.data(), aete.size());
}
