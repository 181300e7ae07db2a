// hostsim's channel access: the record's documentInfo (a ReadImageDocumentDesc over the
// document's layers, the merged image and the selection), the read ports behind it, the classic
// channelPortProcs and the "Photoshop ChannelPorts Suite for Plug-ins" (versions 2 and 3).
//
// Reads copy level 0 only, at the port's own depth (8 or 16), into memory described in bits;
// strides and offsets must be whole bytes. A destination pixel (y, x) of a read of rectangle R
// lands at data + (y - R.top) * rowBits / 8 + (x - R.left) * colBits / 8 + bitOffset / 8, so
// the caller lays out memory for the rectangle it asked for; the part of R outside the port is
// left untouched and the rectangle actually written is reported back. The classic read with
// unequal scaling rectangles resamples by nearest neighbour: destination row y reads source row
// source.top + floor((y - destination.top) * sourceHeight / destinationHeight), columns alike.
#pragma once

#include "Document.h"

#include <deque>
#include <string>
#include <vector>

namespace hostsim {

class ChannelPorts {
public:
    ChannelPorts() = default;
    ~ChannelPorts();
    ChannelPorts(const ChannelPorts&) = delete;
    ChannelPorts& operator=(const ChannelPorts&) = delete;

    // Describes `doc` afresh, invalidating earlier ports. `targetSource` stands for the target
    // layer (the host reads the layer as it was when the run began). The document and the
    // source must outlive the ports or the next Build. maxVersion is the document record's.
    void Build(const Document& doc, const Layer& targetSource, int32 maxVersion);
    ReadImageDocumentDesc* DocumentInfo() { return &info_; }

    static const ChannelPortProcs* Procs();
    // The suite table for version 2 or 3, or null.
    static const PSChannelPortsSuite* Suite(int32 version);

    struct Port {
        const uint8* base = nullptr;
        size_t pixelStep = 0;
        size_t rowStep = 0;
        int32 width = 0;
        int32 height = 0;
        int32 depth = 8;
    };

private:
    ReadChannelDesc* AddChannel(const Port& port, int16 type, const std::string& name, bool target);
    ReadChannelDesc* AddList(const Document& doc, const Layer& layer, bool target);
    void Clear();

    ReadImageDocumentDesc info_{};
    std::deque<Port> ports_;
    std::vector<uintptr_t> portIds_;
    std::deque<ReadChannelDesc> channels_;
    std::deque<ReadLayerDesc> layers_;
    std::deque<std::string> names_;
    std::deque<std::vector<uint16>> unicodeNames_;
    std::vector<uint8> mergedColour_;
    std::vector<uint8> mergedTransparency_;
};

} // namespace hostsim
