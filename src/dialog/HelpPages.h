// The manual's pages by number and the product's web addresses. F1 and the help button
// name a page by number; the opener turns it into a file of the help folder.
#pragma once

#include <cstdint>
#include <string>

#include "online/SiteAddress.h"

inline constexpr int32_t kHelpPageIndex = 0;
inline constexpr int32_t kHelpPageBasic = 777; // then Wash, Surface, Background
inline constexpr int32_t kHelpPageDrawer = 877;

// F1 on tab `tab` (0 Basic to 3 Background); any other tab gives the index.
int32_t HelpPageOfTab(int32_t tab);
// The page's file name: 777 to 780 the tabs, 877 the texture drawer, anything else the index.
const char* HelpPageFile(int32_t number);
// The help folder of PathTable and the page's file.
std::string HelpPagePath(int32_t number);

// Paths on the site, each beginning with "/".
inline constexpr const char* kAllPresetsPath = "/filters/quenzit/examples/all-sets";
inline constexpr const char* kWebManualPath = "/qzt/index.html";
std::string SiteAddress(const char* path);
