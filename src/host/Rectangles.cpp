#include "host/Rectangles.h"

#include "host/Session.h"

namespace {

VRect Widen(const Rect& r) { return {r.top, r.left, r.bottom, r.right}; }
Rect Narrow(const VRect& r) { return {int16(r.top), int16(r.left), int16(r.bottom), int16(r.right)}; }

// The record is packed to 4 bytes: copy fields out and in whole, never bind references.
VRect Read(Rect FilterRecord::*small, VRect BigDocumentStruct::*big) {
    if (UsesBigDocument()) {
        VRect r = gFilterRecord->bigDocumentData->*big;
        return r;
    }
    Rect r = gFilterRecord->*small;
    return Widen(r);
}

VPoint ReadPoint(Point FilterRecord::*small, VPoint BigDocumentStruct::*big) {
    if (UsesBigDocument()) return gFilterRecord->bigDocumentData->*big;
    const Point p = gFilterRecord->*small;
    return {p.v, p.h};
}

void Write(Rect FilterRecord::*small, VRect BigDocumentStruct::*big, const VRect& r) {
    if (UsesBigDocument()) gFilterRecord->bigDocumentData->*big = r;
    else gFilterRecord->*small = Narrow(r);
}

} // namespace

bool UsesBigDocument() {
    return gFilterRecord && gFilterRecord->bigDocumentData &&
           gFilterRecord->bigDocumentData->PluginUsing32BitCoordinates != 0;
}

VRect GetFilterRect() { return Read(&FilterRecord::filterRect, &BigDocumentStruct::filterRect32); }
VRect GetInRect() { return Read(&FilterRecord::inRect, &BigDocumentStruct::inRect32); }
VRect GetOutRect() { return Read(&FilterRecord::outRect, &BigDocumentStruct::outRect32); }
VRect GetMaskRect() { return Read(&FilterRecord::maskRect, &BigDocumentStruct::maskRect32); }
void SetInRect(const VRect& r) { Write(&FilterRecord::inRect, &BigDocumentStruct::inRect32, r); }
void SetOutRect(const VRect& r) { Write(&FilterRecord::outRect, &BigDocumentStruct::outRect32, r); }
void SetMaskRect(const VRect& r) { Write(&FilterRecord::maskRect, &BigDocumentStruct::maskRect32, r); }

VPoint GetFloatCoord() { return ReadPoint(&FilterRecord::floatCoord, &BigDocumentStruct::floatCoord32); }
VPoint GetImageSize() { return ReadPoint(&FilterRecord::imageSize, &BigDocumentStruct::imageSize32); }
