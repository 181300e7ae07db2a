// hostsim's host: owns a Document and drives a filter plug-in through the filter interface
// as a host does: one FilterRecord per run, the parameter handle and data slot kept across
// calls and runs, selectors in order, advanceState with rectangles, plane ranges, sampling and
// padding, progress, the basic suite and what it hands out, channel ports and documentInfo,
// colour services, scripting and bigDocumentData. Anything optional can be left out, so the
// minimal hosts that exist can be played.
//
// How requests are served (advanceState, and before each Continue):
// - The previous outData is written back into the target layer first.
// - Rectangles are read from bigDocumentData's 32-bit fields once the plug-in has set
//   PluginUsing32BitCoordinates there, else from the 16-bit fields.
// - inRect and maskRect are in sampled coordinates: with a rate r (16.16) sample (y, x) of the
//   buffer is image pixel (floor((top + y) * r), floor((left + x) * r)). r = 1 is plain.
// - inData reads the target layer as it was when the run began; parts outside the image
//   follow inputPadding: 0-255 a fill value (scaled to 0-32768 at depth 16), -1 the nearest
//   edge pixel, -2 unspecified bytes (0xA5), -3 (the default) fails the request with paramErr.
// - outRect must lie inside filterRect, and maskRect inside filterRect at the mask's sampling;
//   anything else fails the request with paramErr. outData starts as the target layer's
//   current pixels.
// - maskData (one byte a pixel, 255 = selected, maskRowBytes = width) comes only when the
//   host set haveMask. Since maskRect stays inside the image, maskPadding never applies.
// - Buffers are interleaved, planes inLoPlane..inHiPlane (outLoPlane..outHiPlane), rows
//   inRowBytes (outRowBytes) apart with no padding.
// A failed run (any selector's error) leaves the document as it was; a successful one with a
// selection and autoMask still set blends the result through the selection.
#pragma once

#include "ChannelPorts.h"
#include "ColorSpace.h"
#include "Descriptor.h"
#include "Document.h"

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace hostsim {

class Registry;
class Scripting;

using PluginEntry = void (*)(int16 selector, void* record, intptr_t* dataSlot, int16* result);

// When a selection comes with haveMask and maskData.
enum class MaskOffer {
    EverySelection, // any selection, rectangular or not
    NonRectangular, // a rectangular selection arrives as filterRect alone
};

struct HostOptions {
    // What the host offers; clearing one plays a host without it.
    bool bigDocumentData = true;
    bool basicSuite = true; // sSPBasic, and with it every suite
    bool descriptorParameters = true;
    bool channelPortProcs = true;
    bool documentInfo = true;
    bool colorServices = true;
    // Suites to leave out, by name (the scripting suites, the colour space or channel ports).
    std::vector<std::string> omitSuites;

    bool zeroFillNewHandles = true; // else new handles hold 0xA5 bytes

    // Initial padding values in the record (the plug-in may change them).
    int16 inputPadding = plugInWantsErrorOnBoundsException;
    int16 outputPadding = plugInWantsErrorOnBoundsException;
    int16 maskPadding = plugInWantsErrorOnBoundsException;
    int64 maxSpace = int64(256) << 20;

    std::optional<int16> filterCase; // unset: from the document (1-7)
    MaskOffer maskOffer = MaskOffer::EverySelection;
    // What the plug-in's filter case flags say: whether the layer mask joins the planes, and
    // whether it writes outside the selection (then the host leaves autoMask off).
    bool filterLayerMasks = false;
    bool writesOutsideSelection = false;

    int32 documentInfoMaxVersion = 3; // 0 plays the oldest record
    OSType hostSig = kPhotoshopSignature;
    // The dialog parent on Windows; 0 takes the desktop window. Natively always 0.
    intptr_t windowsParent = 0;
    ColorServicesSetup colours; // also the record's foreground and background colours

    // Shared across Host objects: a new Host on the same registry is a host restart.
    std::shared_ptr<Registry> registry;

    int maxContinueCalls = 1000000; // a plug-in that never ends its requests is stopped
    // Not noErr: every advanceState answers this, as a host that cannot serve the request.
    int16 advanceStateError = noErr;
};

class Host {
public:
    Host(Document document, HostOptions options, PluginEntry entry);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // One PluginMain call. Selector 4 serves the pending request first (its error is returned
    // without calling the plug-in); selector 5 writes back the last outData first.
    int16 Call(int16 selector);

    // A run from the menu (no descriptor, dialog wanted): Parameters when the host has no
    // parameter handle yet, Prepare, Start, Continue while a rectangle is non-empty, then
    // Finish after a successful Start. The first error is the result.
    int16 RunFilter();
    // The same without Parameters, replaying the last recorded descriptor with its dialog off.
    int16 RepeatFilter();
    // An action step: plays `descriptor` with playInfo (0 dialog off, 1 display, 2 silent).
    int16 PlayAction(const Descriptor& descriptor, int16 playInfo);
    // The same with nothing to play (descriptor null).
    int16 PlayNothing(int16 playInfo);

    // ---- The document ----
    const Document& Doc() const { return doc_; }
    Document& MutableDoc() { return doc_; } // between runs only
    const std::string& DocumentError() const { return docError_; }
    PlaneLayout Planes() const;
    VRect FilterRect() const;

    // ---- What tests look at ----
    const FilterRecord& Record() const { return record_; }
    FilterRecord& MutableRecord() { return record_; }
    const BigDocumentStruct& BigDocument() const { return big_; }

    struct ProgressCall {
        int32 done;
        int32 total;
    };
    const std::vector<ProgressCall>& Progress() const { return progress_; }
    // Time spent in the plug-in's filter selectors, less the host's own work in the
    // advanceState calls made from inside them: the plug-in's share of a run.
    double PluginSeconds() const { return entrySeconds_ - servedSeconds_; }
    // Called on every progress report as it happens (benchmarks time stages by it).
    void SetProgressObserver(std::function<void(int32 done, int32 total)> observer) {
        progressObserver_ = std::move(observer);
    }
    int AbortChecks() const { return abortChecks_; }
    int Calls(int16 selector) const;

    // Every request served, in order, as the host read it.
    struct Request {
        VRect inRect, outRect, maskRect;
        int16 inLoPlane, inHiPlane, outLoPlane, outHiPlane;
        Fixed inputRate, maskRate;
        bool used32Bit;
    };
    const std::vector<Request>& Requests() const { return requests_; }

    bool HasRecorded() const { return hasRecorded_; }
    const Descriptor& Recorded() const { return recorded_; }
    int16 RecordInfo() const { return recordInfo_; }

    // Misuse seen by the host, the scripting side and the handle table; clears them.
    std::vector<std::string> TakeMisuse();
    // False once a parameter or data handle was left locked after a selector other than 0.
    bool HandlesUnlocked() const { return handlesUnlocked_; }
    // "name version" of every AcquireSuite, found or not.
    const std::vector<std::string>& SuiteRequests() const { return suiteRequests_; }
    const std::vector<std::string>& PickerPrompts() const { return prompts_; }
    // The plug-in's errorString after it returned errReportString.
    const std::string& ErrorString() const { return errorText_; }

    Handle Parameters() const { return parameters_; }
    // The bytes of the parameter block and of the data slot's block (empty without one),
    // and both handed back as a host keeps them to repeat a filter: the next run starts
    // from them without Parameters.
    std::vector<uint8> ParameterBytes() const;
    std::vector<uint8> DataBytes() const;
    void KeepBlocks(const std::vector<uint8>& parameters, const std::vector<uint8>& data);
    intptr_t DataSlot() const { return dataSlot_; }
    Scripting& GetScripting() { return *scripting_; }
    Registry& GetRegistry() { return *registry_; }

    // Called by the interface's callbacks (plain functions) on the host making the call.
    static Host* Current();
    OSErr AdvanceState();
    void OnProgress(int32 done, int32 total) {
        progress_.push_back({done, total});
        if (progressObserver_) progressObserver_(done, total);
    }
    void OnAbortCheck() { ++abortChecks_; }
    OSErr OnColorServices(ColorServicesInfo* info);
    SPErr AcquireSuite(const char* name, int32 version, const void** suite);
    SPErr ReleaseSuite(const char* name, int32 version);
    SPErr AllocateBlock(size_t size, void** block);
    SPErr FreeBlock(void* block);
    SPErr ReallocateBlock(void* block, size_t size, void** newBlock);

private:
    int16 Run(bool withParameters);
    void CheckDocument();
    void BeginRun();
    void EndRun();
    void FillRecord();
    OSErr Serve();
    void FlushOutput();
    bool RequestPending() const;
    VRect ReadRect(int which) const;
    OSErr FillSampled(const VRect& rect, Fixed rate, int16 padding, int lo, int hi, bool mask,
                      std::vector<uint8>& buffer);
    void CheckSuiteBalance();
    void CollectScriptingMisuse();
    void Misuse(std::string what) { misuse_.push_back(std::move(what)); }

    Document doc_;
    HostOptions options_;
    PluginEntry entry_;
    std::string docError_;
    std::shared_ptr<Registry> registry_;
    std::unique_ptr<Scripting> scripting_;
    ChannelPorts ports_;
    std::set<std::string> omitted_;

    FilterRecord record_{};
    BigDocumentStruct big_{};
    PlatformData platform_{};
    SPBasicSuite basic_{};
    Str255 errorString_{};
    Handle parameters_ = nullptr;
    intptr_t dataSlot_ = 0;

    // The run in progress.
    bool runActive_ = false;
    bool started_ = false;
    int16 runError_ = 0;
    Layer source_;
    PlaneLayout layout_;
    VRect filterRect_{};
    bool haveMask_ = false;
    std::vector<uint8> inBuf_, outBuf_, maskBuf_;
    bool outPending_ = false;
    VRect outRect_{};
    int outLo_ = 0, outHi_ = 0;

    // Observations.
    std::array<int, 7> calls_{};
    std::vector<ProgressCall> progress_;
    std::function<void(int32, int32)> progressObserver_;
    double entrySeconds_ = 0.0, servedSeconds_ = 0.0;
    int abortChecks_ = 0;
    std::vector<Request> requests_;
    std::vector<std::string> misuse_;
    bool handlesUnlocked_ = true;
    std::map<std::string, int> held_;
    std::set<void*> blocks_;
    std::vector<std::string> suiteRequests_;
    std::vector<std::string> prompts_;
    std::string errorText_;
    Descriptor recorded_;
    bool hasRecorded_ = false;
    int16 recordInfo_ = 0;
};

} // namespace hostsim
