#include "dialog/HelpPages.h"

#include "state/PathTable.h"

int32_t HelpPageOfTab(int32_t tab) { return tab >= 0 && tab <= 3 ? kHelpPageBasic + tab : kHelpPageIndex; }

const char* HelpPageFile(int32_t number) {
    switch (number) {
    case kHelpPageBasic: return "basic.html";
    case kHelpPageBasic + 1: return "wash.html";
    case kHelpPageBasic + 2: return "surface.html";
    case kHelpPageBasic + 3: return "background.html";
    case kHelpPageDrawer: return "texture_picker.html";
    default: return "index.html";
    }
}

std::string HelpPagePath(int32_t number) { return PathTable.Help + HelpPageFile(number); }

std::string SiteAddress(const char* path) { return std::string(kSiteAddress) + path; }
