// Module path: the shared object (or executable) that holds this function.
#include "platform/ModulePathBackend.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdlib>

namespace {

std::string AbsolutePath(const char* path) {
    std::string result;
    if (char* resolved = realpath(path, nullptr)) {
        result = resolved;
        std::free(resolved);
    }
    return result;
}

} // namespace

std::string SystemModulePath() {
    Dl_info info{};
    link_map* map = nullptr;
    auto* self = reinterpret_cast<void*>(&SystemModulePath);
    // For the main program the loader reports argv[0], which may be a bare name
    // found through PATH; /proc/self/exe is the reliable answer there.
    if (dladdr1(self, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) != 0 && map && map->l_name &&
        map->l_name[0] != '\0' && info.dli_fname) {
        std::string path = AbsolutePath(info.dli_fname);
        if (!path.empty()) return path;
    }
    return AbsolutePath("/proc/self/exe");
}
