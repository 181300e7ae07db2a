// The module's own activation context while a dialog of ours runs: the host's context
// may name older common controls, our manifest (resource 2) names version 6.
#pragma once

#include <windows.h>

class ModuleActivation {
public:
    explicit ModuleActivation(HINSTANCE module) {
        ACTCTXA context{};
        context.cbSize = sizeof context;
        context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        context.hModule = module;
        context.lpResourceName = MAKEINTRESOURCEA(2);
        context_ = CreateActCtxA(&context);
        active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_);
    }
    ~ModuleActivation() {
        if (active_) DeactivateActCtx(0, cookie_);
        if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
    }
    ModuleActivation(const ModuleActivation&) = delete;
    ModuleActivation& operator=(const ModuleActivation&) = delete;

private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};
