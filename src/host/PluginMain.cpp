#include "host/PluginMain.h"

#include "host/Dialog.h"
#include "host/HostSuite.h"
#include "state/Parameters.h"
#include "state/PathTable.h"
#include "state/Progress.h"
#include "state/WorkImages.h"
#include "host/Rectangles.h"
#include "host/RunFilter.h"
#include "host/ScriptParameters.h"
#include "host/Session.h"
#include "presets/UiSettings.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32 kParameterBlockSize = sizeof(FilterParameters);
constexpr int32 kDataBlockSize = sizeof(PluginData);

Handle NewBlock(int32 size) {
    Handle h = gFilterRecord->handleProcs ? gFilterRecord->handleProcs->newProc(size) : nullptr;
    if (!h) SetResult(memFullErr);
    return h;
}

void InitData() {
    std::memset(gPluginData->ProxyRect, 0, sizeof gPluginData->ProxyRect);
    gPluginData->QueryForParameters = 1;
}

// Makes whichever block is missing; hosts differ in whether new blocks are zeroed.
bool MakeMissingBlocks() {
    bool madeParameters = false;
    if (!gFilterRecord->parameters) {
        gFilterRecord->parameters = NewBlock(kParameterBlockSize);
        madeParameters = gFilterRecord->parameters != nullptr;
    }
    if (!*gDataSlot) *gDataSlot = reinterpret_cast<intptr_t>(NewBlock(kDataBlockSize));
    return madeParameters;
}

void DoParameters() {
    const bool madeParameters = MakeMissingBlocks();
    if (ResultIsSet()) return;
    LockHandles();
    if (ResultIsSet()) return;
    if (madeParameters) {
        std::memset(gParams, 0, sizeof *gParams);
        InitParameters();
    }
    InitData();
}

// Whether the host's action suites can be had: the descriptor suite, and a reference
// made and freed through the reference suite.
bool TestActionSuites() {
    if (!BasicSuite()) return false;
    if (!HostSuite<PSActionDescriptorProcs>(kPSActionDescriptorSuite, 3)) return false;
    HostSuite<PSActionReferenceProcs> references(kPSActionReferenceSuite, 3);
    PIActionReference reference = nullptr;
    return references && references->Make(&reference) == noErr && reference && references->Free(reference) == noErr;
}

void DoPrepare() {
    ComputePaths();
    HostActionSuites = TestActionSuites();
    if (gFilterRecord->parameters && *gDataSlot) {
        LockHandles();
    } else {
        const bool madeParameters = MakeMissingBlocks();
        if (ResultIsSet()) return;
        LockHandles();
        if (ResultIsSet()) return;
        if (madeParameters) std::memset(gParams, 0, sizeof *gParams);
        InitParameters();
        InitData();
    }
    if (ResultIsSet()) return;
    // The ini file needs the locked block; read after a new one is set up, it overlays the defaults.
    ReadUiSettings();

    gFilterRecord->bufferSpace = 0;
    const VRect filter = GetFilterRect();
    const int64 planes = gFilterRecord->planes + (gFilterRecord->maskData ? 1 : 0);
    const int64 tile = planes * std::min<int64>(RectHeight(filter), 256) * std::min<int64>(RectWidth(filter), 256);
    if (int64(gFilterRecord->maxSpace) > 2 * tile) gFilterRecord->maxSpace = int32(2 * tile);
}

// The whole image as one tile: the host answers with every plane of the filter rectangle.
void StartRun() {
    gFilterRecord->outLoPlane = gFilterRecord->inLoPlane = 0;
    gFilterRecord->outHiPlane = gFilterRecord->inHiPlane = int16(gFilterRecord->planes - 1);
    ComputePaths();
    const VRect filter = GetFilterRect();
    SetInRect(filter);
    SetOutRect(filter);
    SetMaskRect(filter);
    gFilterRecord->inputRate = 0x10000;
    gFilterRecord->maskRate = 0x10000;
    SetResult(gFilterRecord->advanceState());
    if (!ResultIsSet()) RunFilter();
    // Cleared where they were set: a host reading the 32-bit ones would serve them again.
    const VRect empty{0, 0, 0, 0};
    SetInRect(empty);
    SetOutRect(empty);
    SetMaskRect(empty);
}

void DoStart() {
    LockHandles();
    if (ResultIsSet()) return;
    ReadSavedSettings();
    const int16 amount = gParams->Amount;
    const int16 disposition = gParams->Disposition;
    const uint8 ignoreSelection = gParams->IgnoreSelection;

    bool dialogWanted = false;
    const OSErr scriptError = ReadScriptParameters(&dialogWanted);
    bool accepted = true;
    if (!scriptError && dialogWanted) {
        if (gParams->ApplySeries == 1 && gParams->ApplySeriesFirst == 0) {
            DialogOpen = false;
            gPluginData->QueryForParameters = 0;
            StartRun();
            return;
        }
        accepted = OpenDialog();
    }
    gPluginData->QueryForParameters = 0;
    if (!accepted) {
        gParams->Disposition = disposition;
        gParams->Amount = amount;
        gParams->IgnoreSelection = ignoreSelection;
        SetResult(userCanceledErr);
        return;
    }
    StartRun();
}

void DoContinue() {
    const VRect empty{0, 0, 0, 0};
    SetInRect(empty);
    SetOutRect(empty);
    SetMaskRect(empty);
}

void DoFinish() {
    LockHandles();
    if (ResultIsSet()) return;
    WriteScriptParameters();
    WriteSavedSettings();
}

// The engine reports through a plain function; in a final run it reaches the host's bar.
void HostProgress(int32_t done, int32_t total) {
    if (gFilterRecord && gFilterRecord->progressProc) gFilterRecord->progressProc(done, total);
}

} // namespace

QZ_EXPORT void PluginMain(int16_t selector, void* record, intptr_t* dataSlot, int16_t* result) {
    gSelector = selector;
    gDataSlot = dataSlot;
    gResult = result;
    gFilterRecord = selector == filterSelectorAbout ? nullptr : static_cast<FilterRecord*>(record);
    gAboutRecord = selector == filterSelectorAbout ? static_cast<AboutRecord*>(record) : nullptr;
    HostProgressBar = HostProgress;
    DocumentPlanes = gFilterRecord ? gFilterRecord->planes : 0;
    if (!record || !dataSlot || !result) return;
    SetResult(noErr);

    // Nothing below may throw across the host boundary.
    try {
        if (gFilterRecord && gFilterRecord->bigDocumentData)
            gFilterRecord->bigDocumentData->PluginUsing32BitCoordinates = 1;
        switch (selector) {
        case filterSelectorAbout: {
            ComputePaths();
            const auto* platform = static_cast<const PlatformData*>(gAboutRecord->platformData);
            RunAboutSelector(platform ? reinterpret_cast<void*>(platform->hwnd) : nullptr);
            break;
        }
        case filterSelectorParameters: DoParameters(); break;
        case filterSelectorPrepare: DoPrepare(); break;
        case filterSelectorStart: DoStart(); break;
        case filterSelectorContinue: DoContinue(); break;
        case filterSelectorFinish: DoFinish(); break;
        default: break;
        }
    } catch (...) {
        SetResult(memFullErr);
    }
    if (selector != filterSelectorAbout && gFilterRecord) UnlockHandles();
    // Nothing of the host's call outlives it.
    gFilterRecord = nullptr;
    gAboutRecord = nullptr;
    DocumentPlanes = 0;
    gDataSlot = nullptr;
    gResult = nullptr;
}
