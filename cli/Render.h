// One picture through the plug-in, as a host plays an action step with its dialog off.
#pragma once

#include "ImageFiles.h"

#include "hostsim/Descriptor.h"
#include "hostsim/Document.h"

#include <functional>
#include <string>
#include <vector>

struct RenderOptions {
    bool flat = false;                                 // drop the picture's alpha
    bool cmyk = false;                                 // run an RGB picture as a CMYK document
    std::string selection;                             // mask file, or empty
    std::function<void(int done, int total)> progress; // the plug-in's reports as they come
};

enum class RenderStatus { Done, BadInput, Failed };

struct RenderResult {
    RenderStatus status = RenderStatus::Done;
    std::string message;             // why it did not work
    Picture picture;                 // the result when done: CMYK when the document was
    std::vector<uint8_t> parameters; // the plug-in's parameter block as the run left it
};

// The document a picture makes (RGB, or CMYK for a CMYK picture), its alpha the layer's
// transparency unless flat.
hostsim::Document DocumentOf(const Picture& picture, bool flat);
// A CMYK picture in RGB, through the host's colour services; others as they are.
Picture RgbOf(const Picture& picture);

// The plug-in must already know its data folder (SetModuleFilePathOverride).
RenderResult RenderPicture(const Picture& input, const RenderOptions& options, const hostsim::Descriptor& played);
