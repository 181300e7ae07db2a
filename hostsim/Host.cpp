#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
#endif

#include "Host.h"

#include "Handles.h"
#include "Registry.h"
#include "Scripting.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace hostsim {
namespace {

// One buffer above this is refused with memFullErr rather than attempted.
constexpr int64 kMaxBuffer = int64(1) << 30;

Host* gCurrent = nullptr;

int16 Clamp16(int32 v) { return int16(std::min(std::max(v, int32(INT16_MIN)), int32(INT16_MAX))); }

Rect ToRect16(const VRect& r) { return {Clamp16(r.top), Clamp16(r.left), Clamp16(r.bottom), Clamp16(r.right)}; }

VRect FromRect16(const Rect& r) { return {r.top, r.left, r.bottom, r.right}; }

bool Inside(const VRect& r, const VRect& outer) {
    return r.top >= outer.top && r.left >= outer.left && r.bottom <= outer.bottom && r.right <= outer.right;
}

// Image coordinate of sampled coordinate v at rate (16.16); an arithmetic shift floors.
int64 Sampled(int64 v, Fixed rate) { return (v * rate) >> 16; }

Fixed ToFixed(double v) { return Fixed(v * 65536.0 + 0.5); }

void ToFilterColour(const std::array<uint8, 3>& rgb, int16 mode, FilterColor out) {
    Color8 c = {0, rgb[0], rgb[1], rgb[2]};
    std::memset(out, 0, sizeof(FilterColor));
    switch (mode) {
    case plugInModeCMYKColor:
    case plugInModeCMYK64:
        Convert8(plugIncolorServicesRGBSpace, plugIncolorServicesCMYKSpace, &c, 1);
        std::memcpy(out, c, 4);
        return;
    case plugInModeGrayScale:
    case plugInModeGray16:
    case plugInModeDuotone:
    case plugInModeDuotone16:
        Convert8(plugIncolorServicesRGBSpace, plugIncolorServicesGraySpace, &c, 1);
        out[0] = c[3];
        return;
    case plugInModeLabColor:
    case plugInModeLab48: Convert8(plugIncolorServicesRGBSpace, plugIncolorServicesLabSpace, &c, 1); break;
    default: break;
    }
    std::memcpy(out, c + 1, 3);
}

// No exception crosses back into the plug-in.
template <typename R, typename F> R Guarded(R failure, F&& body) {
    try {
        return body();
    } catch (...) {
        return failure;
    }
}

Boolean QZ_HOSTCALL AbortCb() {
    if (Host* h = Host::Current()) Guarded(0, [h] { return h->OnAbortCheck(), 0; });
    return 0;
}

void QZ_HOSTCALL ProgressCb(int32 done, int32 total) {
    if (Host* h = Host::Current()) Guarded(0, [=] { return h->OnProgress(done, total), 0; });
}

OSErr QZ_HOSTCALL AdvanceStateCb() {
    Host* h = Host::Current();
    return h ? Guarded(OSErr(memFullErr), [h] { return h->AdvanceState(); }) : OSErr(paramErr);
}

OSErr QZ_HOSTCALL ColorServicesCb(ColorServicesInfo* info) {
    Host* h = Host::Current();
    return h ? Guarded(OSErr(memFullErr), [=] { return h->OnColorServices(info); }) : OSErr(paramErr);
}

SPErr QZ_HOSTCALL AcquireSuiteCb(const char* name, int32 version, const void** suite) {
    Host* h = Host::Current();
    return h ? Guarded(kSPOutOfMemoryError, [=] { return h->AcquireSuite(name, version, suite); })
             : kSPBadParameterError;
}

SPErr QZ_HOSTCALL ReleaseSuiteCb(const char* name, int32 version) {
    Host* h = Host::Current();
    return h ? Guarded(kSPOutOfMemoryError, [=] { return h->ReleaseSuite(name, version); }) : kSPBadParameterError;
}

SPBoolean QZ_HOSTCALL IsEqualCb(const char* a, const char* b) { return a && b && std::strcmp(a, b) == 0 ? 1 : 0; }

SPErr QZ_HOSTCALL AllocateBlockCb(size_t size, void** block) {
    Host* h = Host::Current();
    return h ? Guarded(kSPOutOfMemoryError, [=] { return h->AllocateBlock(size, block); }) : kSPBadParameterError;
}

SPErr QZ_HOSTCALL FreeBlockCb(void* block) {
    Host* h = Host::Current();
    return h ? Guarded(kSPOutOfMemoryError, [=] { return h->FreeBlock(block); }) : kSPBadParameterError;
}

SPErr QZ_HOSTCALL ReallocateBlockCb(void* block, size_t size, void** newBlock) {
    Host* h = Host::Current();
    return h ? Guarded(kSPOutOfMemoryError, [=] { return h->ReallocateBlock(block, size, newBlock); })
             : kSPBadParameterError;
}

SPErr QZ_HOSTCALL UndefinedCb() { return kSPUnimplementedError; }

// Makes a host (and its scripting) current for one call, and puts back the one before.
class CurrentScope {
public:
    CurrentScope(Host* host, Scripting* scripting, Scripting* previousScripting)
        : previous_(gCurrent), previousScripting_(previousScripting) {
        gCurrent = host;
        Scripting::SetCurrent(scripting);
    }
    ~CurrentScope() {
        gCurrent = previous_;
        Scripting::SetCurrent(previousScripting_);
    }

private:
    Host* previous_;
    Scripting* previousScripting_;
};

} // namespace

Host* Host::Current() { return gCurrent; }

Host::Host(Document document, HostOptions options, PluginEntry entry)
    : doc_(std::move(document)), options_(std::move(options)), entry_(entry) {
    CheckDocument();
    registry_ = options_.registry ? options_.registry : std::make_shared<Registry>();
    DocumentView view;
    view.targetLayerName = [this] { return docError_.empty() ? doc_.Target().name : std::string(); };
    view.layerVisible = [this](const std::string& name, bool& visible) {
        for (const Layer& layer : doc_.layers)
            if (layer.name == name) {
                visible = layer.visible;
                return true;
            }
        return false;
    };
    scripting_ = std::make_unique<Scripting>(*registry_, std::move(view));
    for (const std::string& name : options_.omitSuites) {
        if (scripting_->Owns(name.c_str())) scripting_->Omit(name);
        else omitted_.insert(name);
    }
    if (!options_.descriptorParameters) scripting_->OmitDescriptorParameters();
    basic_ = {AcquireSuiteCb, ReleaseSuiteCb, IsEqualCb, AllocateBlockCb, FreeBlockCb, ReallocateBlockCb, UndefinedCb};
#ifdef _WIN32
    platform_.hwnd = options_.windowsParent ? options_.windowsParent : reinterpret_cast<intptr_t>(GetDesktopWindow());
#else
    platform_.hwnd = 0;
#endif
}

// The document may have changed between runs (MutableDoc).
void Host::CheckDocument() {
    docError_ = doc_.Validate();
    if (docError_.empty() && IsEmpty(FilterRect())) docError_ = "no pixels are selected";
    if (!entry_) docError_ = "no plug-in entry point";
}

// A host that goes away takes the blocks it handed out with it, the plug-in's data handle too.
Host::~Host() {
    if (parameters_ && IsLiveHandle(parameters_)) DisposeHandle(parameters_);
    const Handle data = reinterpret_cast<Handle>(dataSlot_);
    if (data && data != parameters_ && IsLiveHandle(data)) DisposeHandle(data);
    for (void* block : blocks_) std::free(block);
}

PlaneLayout Host::Planes() const {
    PlaneLayout layout;
    if (!docError_.empty()) return layout;
    const Layer& target = doc_.Target();
    layout.colour = doc_.ColourPlanes();
    layout.transparency = !target.transparency.empty() && !target.transparencyLocked;
    layout.layerMask = !target.layerMask.empty() && options_.filterLayerMasks;
    return layout;
}

VRect Host::FilterRect() const {
    if (doc_.filterRect) return *doc_.filterRect;
    return doc_.SelectionBounds();
}

int Host::Calls(int16 selector) const { return selector >= 0 && selector <= 5 ? calls_[size_t(selector)] : calls_[6]; }

std::vector<std::string> Host::TakeMisuse() {
    // Mid-run, the scripting side would report what the plug-in still legitimately holds.
    if (!runActive_) CollectScriptingMisuse();
    std::vector<std::string> all = std::exchange(misuse_, {});
    for (std::string& m : TakeHandleMisuse()) all.push_back("handles: " + m);
    return all;
}

// ---- Calls and runs ----

int16 Host::Call(int16 selector) {
    if (!runActive_) CheckDocument();
    if (!docError_.empty()) return paramErr;
    Host* previous = gCurrent;
    CurrentScope scope(this, scripting_.get(), previous ? previous->scripting_.get() : nullptr);
    SetZeroFillNewHandles(options_.zeroFillNewHandles);
    ++calls_[selector >= 0 && selector <= 5 ? size_t(selector) : 6];
    int16 result = noErr;

    if (selector == filterSelectorAbout) {
        AboutRecord about{};
        about.platformData = &platform_;
        about.sSPBasic = options_.basicSuite ? &basic_ : nullptr;
        entry_(selector, &about, &dataSlot_, &result);
        if (!runActive_) {
            CheckSuiteBalance();
            CollectScriptingMisuse();
        }
        return result;
    }

    if (!runActive_) BeginRun();
    if (selector == filterSelectorContinue) {
        if (const OSErr err = Serve()) {
            if (!runError_) runError_ = err;
            return err;
        }
    }
    if (selector == filterSelectorFinish) FlushOutput();
    if (selector == filterSelectorStart) started_ = true;

    record_.parameters = parameters_;
    errorString_[0] = 0;
    const auto began = std::chrono::steady_clock::now();
    entry_(selector, &record_, &dataSlot_, &result);
    entrySeconds_ += std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    parameters_ = record_.parameters;

    const Handle data = reinterpret_cast<Handle>(dataSlot_);
    for (const auto& [handle, which] : {std::pair<Handle, const char*>{parameters_, "parameter"}, {data, "data"}})
        if (handle && IsLiveHandle(handle) && IsLocked(handle)) {
            handlesUnlocked_ = false;
            Misuse(std::string("the ") + which + " handle is still locked after selector " + std::to_string(selector));
        }
    if (result == errReportString) errorText_.assign(reinterpret_cast<const char*>(errorString_ + 1), errorString_[0]);
    if (result != noErr && !runError_) runError_ = result;

    const bool runOver = selector == filterSelectorFinish ||
                         (result != noErr && selector >= filterSelectorParameters && selector <= filterSelectorStart);
    if (runOver) EndRun();
    return result;
}

namespace {

std::vector<uint8> BytesOf(Handle h) {
    if (!h || !IsLiveHandle(h)) return {};
    const uint8* data = reinterpret_cast<const uint8*>(*h);
    return std::vector<uint8>(data, data + HandleSize(h));
}

Handle HandleOf(const std::vector<uint8>& bytes) {
    Handle h = NewHandle(int32(bytes.size()));
    if (h && !bytes.empty()) std::memcpy(*h, bytes.data(), bytes.size());
    return h;
}

} // namespace

std::vector<uint8> Host::ParameterBytes() const { return BytesOf(parameters_); }

std::vector<uint8> Host::DataBytes() const { return BytesOf(reinterpret_cast<Handle>(dataSlot_)); }

void Host::KeepBlocks(const std::vector<uint8>& parameters, const std::vector<uint8>& data) {
    if (parameters_ && IsLiveHandle(parameters_)) DisposeHandle(parameters_);
    parameters_ = record_.parameters = HandleOf(parameters);
    dataSlot_ = intptr_t(HandleOf(data));
}

int16 Host::RunFilter() {
    scripting_->SetPlayback(nullptr, plugInDialogDisplay);
    return Run(true);
}

int16 Host::RepeatFilter() {
    const Descriptor last = recorded_;
    scripting_->SetPlayback(hasRecorded_ ? &last : nullptr, plugInDialogDontDisplay);
    return Run(false);
}

int16 Host::PlayAction(const Descriptor& descriptor, int16 playInfo) {
    scripting_->SetPlayback(&descriptor, playInfo);
    return Run(true);
}

int16 Host::PlayNothing(int16 playInfo) {
    scripting_->SetPlayback(nullptr, playInfo);
    return Run(true);
}

int16 Host::Run(bool withParameters) {
    if (!runActive_) CheckDocument();
    if (!docError_.empty()) return paramErr;
    if (runActive_) EndRun(); // a sequence of single calls left unfinished
    BeginRun();
    int16 result = noErr;
    // Each of these ends the run itself when it fails.
    if (withParameters && !parameters_ && (result = Call(filterSelectorParameters)) != noErr) return result;
    if ((result = Call(filterSelectorPrepare)) != noErr) return result;
    if ((result = Call(filterSelectorStart)) != noErr) return result;
    int continues = 0;
    while (result == noErr && RequestPending()) {
        if (++continues > options_.maxContinueCalls) {
            Misuse("the plug-in did not end its requests after " + std::to_string(options_.maxContinueCalls) +
                   " continue calls");
            result = paramErr;
            runError_ = result;
            break;
        }
        result = Call(filterSelectorContinue);
    }
    const int16 finish = Call(filterSelectorFinish);
    return result != noErr ? result : finish;
}

void Host::BeginRun() {
    runActive_ = true;
    started_ = false;
    runError_ = noErr;
    source_ = doc_.Target();
    layout_ = Planes();
    filterRect_ = FilterRect();
    haveMask_ =
        !doc_.selection.empty() && (options_.maskOffer == MaskOffer::EverySelection || !doc_.SelectionIsRectangle());
    outPending_ = false;
    ports_.Build(doc_, source_, options_.documentInfoMaxVersion);
    FillRecord();
}

void Host::FillRecord() {
    FilterRecord& r = record_;
    r = FilterRecord{};
    const bool selection = !doc_.selection.empty();
    const Point size = {Clamp16(doc_.height), Clamp16(doc_.width)};
    const auto& fg = options_.colours.foreground;
    const auto& bg = options_.colours.background;

    r.abortProc = AbortCb;
    r.progressProc = ProgressCb;
    r.parameters = parameters_;
    r.imageSize = size;
    r.planes = int16(layout_.Total());
    r.filterRect = ToRect16(filterRect_);
    r.background = {uint16(bg[0] * 257), uint16(bg[1] * 257), uint16(bg[2] * 257)};
    r.foreground = {uint16(fg[0] * 257), uint16(fg[1] * 257), uint16(fg[2] * 257)};
    r.maxSpace = int32(std::min<int64>(options_.maxSpace, INT32_MAX));
    r.haveMask = haveMask_ ? 1 : 0;
    r.autoMask = selection && !options_.writesOutsideSelection ? 1 : 0;
    ToFilterColour(bg, doc_.imageMode, r.backColor);
    ToFilterColour(fg, doc_.imageMode, r.foreColor);
    r.hostSig = options_.hostSig;
    r.imageMode = doc_.imageMode;
    r.imageHRes = doc_.hResolution;
    r.imageVRes = doc_.vResolution;
    r.wholeSize = size;
    // An sRGB display: gamma 2.2, its primaries and D65 white.
    r.monitor = {ToFixed(2.2),  ToFixed(0.64), ToFixed(0.33),   ToFixed(0.30),   ToFixed(0.60),
                 ToFixed(0.15), ToFixed(0.06), ToFixed(0.3127), ToFixed(0.3290), 0};
    r.platformData = &platform_;
    r.handleProcs = const_cast<HandleProcs*>(GetHandleProcs());

    const Layer& target = doc_.Target();
    const bool flat = target.transparency.empty() && target.layerMask.empty();
    if (options_.filterCase) {
        r.filterCase = *options_.filterCase;
    } else if (target.transparency.empty()) {
        r.filterCase = selection ? filterCaseFlatImageWithSelection : filterCaseFlatImageNoSelection;
    } else if (target.transparencyLocked) {
        r.filterCase =
            selection ? filterCaseProtectedTransparencyWithSelection : filterCaseProtectedTransparencyNoSelection;
    } else {
        r.filterCase =
            selection ? filterCaseEditableTransparencyWithSelection : filterCaseEditableTransparencyNoSelection;
    }
    r.advanceState = AdvanceStateCb;
    r.supportsPadding = 1;
    r.inputPadding = options_.inputPadding;
    r.outputPadding = options_.outputPadding;
    r.maskPadding = options_.maskPadding;
    r.samplingSupport = hostSupportsFractionalSampling;
    r.inputRate = r.maskRate = 1 << 16;
    r.colorServices = options_.colorServices ? ColorServicesCb : nullptr;

    const int16 layerPlanes = flat ? 0 : int16(layout_.colour);
    const int16 transparency = layout_.transparency ? 1 : 0;
    const int16 masks = layout_.layerMask ? 1 : 0;
    const int16 nonLayer = flat ? int16(layout_.colour) : 0;
    r.inLayerPlanes = r.outLayerPlanes = r.absLayerPlanes = layerPlanes;
    r.inTransparencyMask = r.outTransparencyMask = r.absTransparencyMask = transparency;
    r.inLayerMasks = r.outLayerMasks = r.absLayerMasks = masks;
    r.inNonLayerPlanes = r.outNonLayerPlanes = r.absNonLayerPlanes = nonLayer;

    r.descriptorParameters = scripting_->DescriptorParameters();
    r.errorString = &errorString_;
    r.channelPortProcs = options_.channelPortProcs ? const_cast<ChannelPortProcs*>(ChannelPorts::Procs()) : nullptr;
    r.documentInfo = options_.documentInfo ? ports_.DocumentInfo() : nullptr;
    r.sSPBasic = options_.basicSuite ? &basic_ : nullptr;
    r.depth = doc_.depth;
    r.bigDocumentData = options_.bigDocumentData ? &big_ : nullptr;
    r.maxSpace64 = options_.maxSpace;

    big_ = BigDocumentStruct{};
    big_.imageSize32 = {doc_.height, doc_.width};
    big_.filterRect32 = filterRect_;
    big_.wholeSize32 = {doc_.height, doc_.width};
}

void Host::EndRun() {
    outPending_ = false;
    if (runError_ != noErr) {
        if (started_) doc_.Target() = source_;
    } else if (started_ && !doc_.selection.empty() && record_.autoMask) {
        // Blend the result back through the selection.
        Layer& target = doc_.Target();
        const int bps = doc_.BytesPerSample();
        for (int p = 0; p < layout_.Total(); ++p) {
            const PlaneRef dst = doc_.Plane(target, layout_, p);
            const PlaneRef src = doc_.Plane(source_, layout_, p);
            for (int32 y = filterRect_.top; y < filterRect_.bottom; ++y)
                for (int32 x = filterRect_.left; x < filterRect_.right; ++x) {
                    const uint32 m = doc_.selection[size_t(y) * size_t(doc_.width) + size_t(x)];
                    if (m == 255) continue;
                    const size_t at = size_t(y) * dst.rowStep + size_t(x) * dst.pixelStep;
                    uint32 d = 0, s = 0;
                    std::memcpy(&d, dst.base + at, size_t(bps));
                    std::memcpy(&s, src.base + at, size_t(bps));
                    const uint32 v = (d * m + s * (255 - m) + 127) / 255;
                    std::memcpy(dst.base + at, &v, size_t(bps)); // little-endian on both builds
                }
        }
    }
    Descriptor recorded;
    int16 recordInfo = 0;
    if (scripting_->TakeRecorded(recorded, recordInfo) && runError_ == noErr) {
        recorded_ = std::move(recorded);
        recordInfo_ = recordInfo;
        hasRecorded_ = true;
    }
    CheckSuiteBalance();
    CollectScriptingMisuse();
    inBuf_ = {};
    outBuf_ = {};
    maskBuf_ = {};
    record_.inData = record_.outData = record_.maskData = nullptr;
    runActive_ = false;
}

void Host::CollectScriptingMisuse() {
    for (std::string& m : scripting_->TakeMisuse()) Misuse("scripting: " + m);
}

void Host::CheckSuiteBalance() {
    for (const auto& [name, count] : held_)
        if (count > 0)
            Misuse("suite \"" + name + "\" acquired " + std::to_string(count) + " more time(s) than released");
    held_.clear();
}

// ---- Requests ----

VRect Host::ReadRect(int which) const {
    if (record_.bigDocumentData && big_.PluginUsing32BitCoordinates)
        return which == 0 ? big_.inRect32 : which == 1 ? big_.outRect32 : big_.maskRect32;
    return FromRect16(which == 0 ? record_.inRect : which == 1 ? record_.outRect : record_.maskRect);
}

bool Host::RequestPending() const { return !IsEmpty(ReadRect(0)) || !IsEmpty(ReadRect(1)) || !IsEmpty(ReadRect(2)); }

OSErr Host::AdvanceState() {
    if (!runActive_) {
        Misuse("advanceState called outside a filter run");
        return paramErr;
    }
    if (options_.advanceStateError != noErr) return options_.advanceStateError;
    const auto began = std::chrono::steady_clock::now();
    const OSErr err = Serve();
    servedSeconds_ += std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    return err;
}

OSErr Host::FillSampled(const VRect& rect, Fixed rate, int16 padding, int lo, int hi, bool mask,
                        std::vector<uint8>& buffer) {
    if (rate <= 0 || padding < plugInWantsErrorOnBoundsException || padding > 255) return paramErr;
    const int64 w = int64(rect.right) - rect.left, h = int64(rect.bottom) - rect.top;
    const int planes = mask ? 1 : hi - lo + 1;
    const size_t bps = mask ? 1 : size_t(doc_.BytesPerSample());
    if (w > kMaxBuffer / h / planes / int64(bps)) return memFullErr; // without overflowing
    const bool outside = Sampled(rect.top, rate) < 0 || Sampled(rect.left, rate) < 0 ||
                         Sampled(int64(rect.bottom) - 1, rate) >= doc_.height ||
                         Sampled(int64(rect.right) - 1, rate) >= doc_.width;
    if (outside && padding == plugInWantsErrorOnBoundsException) return paramErr;

    buffer.assign(size_t(w * h * planes) * bps, 0);
    std::vector<PlaneRef> refs;
    for (int p = lo; p <= hi && !mask; ++p) refs.push_back(doc_.Plane(source_, layout_, p));
    if (mask) refs.push_back({const_cast<uint8*>(doc_.selection.data()), 1, size_t(doc_.width)});
    const uint32 fill = padding >= 0 && bps == 2 ? (uint32(padding) * 32768 + 127) / 255 : uint32(padding);

    uint8* out = buffer.data();
    for (int64 y = 0; y < h; ++y) {
        const int64 rowY = Sampled(rect.top + y, rate);
        for (int64 x = 0; x < w; ++x) {
            int64 iy = rowY, ix = Sampled(rect.left + x, rate);
            bool inside = iy >= 0 && iy < doc_.height && ix >= 0 && ix < doc_.width;
            if (!inside && padding == plugInWantsEdgeReplication) {
                iy = std::min<int64>(std::max<int64>(iy, 0), doc_.height - 1);
                ix = std::min<int64>(std::max<int64>(ix, 0), doc_.width - 1);
                inside = true;
            }
            for (const PlaneRef& ref : refs) {
                if (inside) std::memcpy(out, ref.base + size_t(iy) * ref.rowStep + size_t(ix) * ref.pixelStep, bps);
                else if (padding == plugInDoesNotWantPadding) std::memset(out, 0xA5, bps);
                else std::memcpy(out, &fill, bps); // little-endian on both builds
                out += bps;
            }
        }
    }
    return noErr;
}

OSErr Host::Serve() {
    FlushOutput();
    record_.inData = record_.outData = record_.maskData = nullptr;
    record_.inRowBytes = record_.outRowBytes = record_.maskRowBytes = 0;
    const VRect in = ReadRect(0), out = ReadRect(1), mask = ReadRect(2);
    requests_.push_back({in, out, mask, record_.inLoPlane, record_.inHiPlane, record_.outLoPlane, record_.outHiPlane,
                         record_.inputRate, record_.maskRate,
                         record_.bigDocumentData && big_.PluginUsing32BitCoordinates});
    const int planes = layout_.Total();
    const size_t bps = size_t(doc_.BytesPerSample());

    if (!IsEmpty(in)) {
        const int lo = record_.inLoPlane, hi = record_.inHiPlane;
        if (lo < 0 || hi < lo || hi >= planes) return paramErr;
        if (const OSErr err = FillSampled(in, record_.inputRate, record_.inputPadding, lo, hi, false, inBuf_))
            return err;
        record_.inData = inBuf_.data();
        record_.inRowBytes = int32((int64(in.right) - in.left) * (hi - lo + 1) * int64(bps));
    }

    if (!IsEmpty(mask)) {
        const Fixed rate = record_.maskRate;
        if (rate <= 0) return paramErr;
        // The image pixels the sampled rectangle covers must lie in the filter rectangle.
        if (Sampled(mask.top, rate) < filterRect_.top || Sampled(mask.left, rate) < filterRect_.left ||
            Sampled(int64(mask.bottom) - 1, rate) >= filterRect_.bottom ||
            Sampled(int64(mask.right) - 1, rate) >= filterRect_.right)
            return paramErr;
        if (haveMask_) {
            if (const OSErr err = FillSampled(mask, rate, record_.maskPadding, 0, 0, true, maskBuf_)) return err;
            record_.maskData = maskBuf_.data();
            record_.maskRowBytes = mask.right - mask.left;
        }
    }

    if (!IsEmpty(out)) {
        const int lo = record_.outLoPlane, hi = record_.outHiPlane;
        if (!Inside(out, filterRect_) || lo < 0 || hi < lo || hi >= planes) return paramErr;
        const size_t w = size_t(out.right - out.left), h = size_t(out.bottom - out.top), n = size_t(hi - lo + 1);
        if (int64(w * h * n * bps) > kMaxBuffer) return memFullErr;
        outBuf_.assign(w * h * n * bps, 0);
        Layer& target = doc_.Target();
        for (size_t p = 0; p < n; ++p) {
            const PlaneRef ref = doc_.Plane(target, layout_, lo + int(p));
            for (size_t y = 0; y < h; ++y)
                for (size_t x = 0; x < w; ++x)
                    std::memcpy(&outBuf_[((y * w + x) * n + p) * bps],
                                ref.base + (size_t(out.top) + y) * ref.rowStep + (size_t(out.left) + x) * ref.pixelStep,
                                bps);
        }
        record_.outData = outBuf_.data();
        record_.outRowBytes = int32(w * n * bps);
        outPending_ = true;
        outRect_ = out;
        outLo_ = lo;
        outHi_ = hi;
    }
    return noErr;
}

void Host::FlushOutput() {
    if (!outPending_) return;
    outPending_ = false;
    const size_t bps = size_t(doc_.BytesPerSample());
    const size_t w = size_t(outRect_.right - outRect_.left), h = size_t(outRect_.bottom - outRect_.top);
    const size_t n = size_t(outHi_ - outLo_ + 1);
    Layer& target = doc_.Target();
    for (size_t p = 0; p < n; ++p) {
        const PlaneRef ref = doc_.Plane(target, layout_, outLo_ + int(p));
        for (size_t y = 0; y < h; ++y)
            for (size_t x = 0; x < w; ++x)
                std::memcpy(ref.base + (size_t(outRect_.top) + y) * ref.rowStep +
                                (size_t(outRect_.left) + x) * ref.pixelStep,
                            &outBuf_[((y * w + x) * n + p) * bps], bps);
    }
}

// ---- Colour services and the basic suite ----

OSErr Host::OnColorServices(ColorServicesInfo* info) { return ServeColorServices(info, options_.colours, prompts_); }

SPErr Host::AcquireSuite(const char* name, int32 version, const void** suite) {
    if (!name || !suite) return kSPBadParameterError;
    *suite = nullptr;
    suiteRequests_.push_back(std::string(name) + " " + std::to_string(version));
    SPErr err = kSPSuiteNotFoundError;
    if (scripting_->Owns(name)) {
        err = scripting_->Acquire(name, version, suite);
    } else if (omitted_.count(name)) {
        err = kSPSuiteNotFoundError;
    } else if (std::strcmp(name, kPSColorSpaceSuite) == 0 && version == kPSColorSpaceSuiteVersion1) {
        *suite = ColorSpaceSuite();
        err = kSPNoError;
    } else if (std::strcmp(name, kPSChannelPortsSuite) == 0 && ChannelPorts::Suite(version)) {
        *suite = ChannelPorts::Suite(version);
        err = kSPNoError;
    }
    // The scripting side keeps its own count of its suites.
    if (err == kSPNoError && !scripting_->Owns(name)) ++held_[name];
    return err;
}

SPErr Host::ReleaseSuite(const char* name, int32 version) {
    if (!name) return kSPBadParameterError;
    if (scripting_->Owns(name)) return scripting_->Release(name, version);
    auto it = held_.find(name);
    if (it == held_.end() || it->second <= 0) {
        Misuse(std::string("suite \"") + name + "\" released without being acquired");
        return kSPBadParameterError;
    }
    --it->second;
    return kSPNoError;
}

SPErr Host::AllocateBlock(size_t size, void** block) {
    if (!block) return kSPBadParameterError;
    *block = std::malloc(size ? size : 1);
    if (!*block) return kSPOutOfMemoryError;
    blocks_.insert(*block);
    return kSPNoError;
}

SPErr Host::FreeBlock(void* block) {
    if (!blocks_.erase(block)) {
        Misuse("FreeBlock of a block the basic suite did not allocate");
        return kSPBadParameterError;
    }
    std::free(block);
    return kSPNoError;
}

SPErr Host::ReallocateBlock(void* block, size_t size, void** newBlock) {
    if (!newBlock) return kSPBadParameterError;
    if (!block) return AllocateBlock(size, newBlock);
    if (!blocks_.count(block)) {
        Misuse("ReallocateBlock of a block the basic suite did not allocate");
        return kSPBadParameterError;
    }
    void* grown = std::realloc(block, size ? size : 1);
    if (!grown) return kSPOutOfMemoryError;
    blocks_.erase(block);
    blocks_.insert(grown);
    *newBlock = grown;
    return kSPNoError;
}

} // namespace hostsim
