// One picture through the plug-in, as a host plays an action step with its dialog off.
#pragma once

#include "ImageFiles.h"

#include "hostsim/Descriptor.h"
#include "hostsim/Document.h"

#include <string>

struct RenderOptions {
    bool flat = false;      // drop the picture's alpha
    bool cmyk = false;      // run a CMYK document; the result comes back as RGB
    std::string selection;  // mask file, or empty
};

enum class RenderStatus { Done, BadInput, Failed };

struct RenderResult {
    RenderStatus status = RenderStatus::Done;
    std::string message;  // why it did not work
    Picture picture;      // the result when done
    int lastDone = 0, lastTotal = 0; // the plug-in's last progress report
};

// The RGB document a picture makes, its alpha the layer's transparency unless flat.
hostsim::Document DocumentOf(const Picture& picture, bool flat);

// The plug-in must already know its data folder (SetModuleFilePathOverride).
RenderResult RenderPicture(const Picture& input, const RenderOptions& options, const hostsim::Descriptor& played);
