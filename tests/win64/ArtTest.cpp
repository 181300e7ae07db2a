// The dialog's art as the built module carries it: every bitmap of the table by number at
// its size and depth and no other, the cursors and the icon as Windows loads them, and
// the Auto button's sound.
#include "win64/ModuleBeside.h"
#include "common/ArtChecks.h"

#include "resources/ArtIds.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <set>
#include <string>

namespace {

HMODULE LoadQuenzit() { return LoadLibraryA(ModulePath().c_str()); }

struct Module {
    HMODULE handle = LoadQuenzit();
    ~Module() {
        if (handle) FreeLibrary(handle);
    }
};

// The bytes of a resource, or an empty view.
struct Bytes {
    const uint8_t* data = nullptr;
    size_t size = 0;
};
Bytes Resource(HMODULE module, int id, const char* type) {
    HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(id), type);
    if (!found) return {};
    HGLOBAL loaded = LoadResource(module, found);
    return {static_cast<const uint8_t*>(LockResource(loaded)), SizeofResource(module, found)};
}

BOOL CALLBACK CollectName(HMODULE, LPCSTR, LPSTR name, LONG_PTR out) {
    if (IS_INTRESOURCE(name)) reinterpret_cast<std::set<int>*>(out)->insert(int(reinterpret_cast<uintptr_t>(name)));
    return TRUE;
}

} // namespace

TEST(ModuleArt, EveryBitmapLoadsAtItsSizeAndDepth) {
    Module module;
    ASSERT_NE(module.handle, nullptr);
    std::set<int> table, found;
    for (const art::BitmapSpec& want : art::kBitmaps) {
        table.insert(want.id);
        const Bytes dib = Resource(module.handle, want.id, MAKEINTRESOURCEA(2) /* RT_BITMAP */);
        ASSERT_NE(dib.data, nullptr) << "bitmap " << want.id << " is missing";
        CheckDib(dib.data, dib.size, want);
        if (want.id == art::kCornerWeights) CheckCornerWeights(dib.data, dib.size);

        // As the dialog loads it.
        HBITMAP bitmap = static_cast<HBITMAP>(
            LoadImageA(module.handle, MAKEINTRESOURCEA(want.id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
        ASSERT_NE(bitmap, nullptr) << want.id;
        BITMAP info{};
        ASSERT_NE(GetObjectA(bitmap, sizeof info, &info), 0);
        EXPECT_EQ(info.bmWidth, want.width) << want.id;
        EXPECT_EQ(info.bmHeight, want.height) << want.id;
        EXPECT_EQ(info.bmBitsPixel, want.bits) << want.id;
        DeleteObject(bitmap);
    }
    EnumResourceNamesA(module.handle, MAKEINTRESOURCEA(2), CollectName, reinterpret_cast<LONG_PTR>(&found));
    EXPECT_EQ(found, table) << "the module holds exactly the table's bitmaps";
}

TEST(ModuleArt, CursorsIconAndSoundLoad) {
    Module module;
    ASSERT_NE(module.handle, nullptr);
    for (int id : {art::kCursorPreviewDrag, art::kCursorPreviewHover}) {
        HCURSOR cursor =
            static_cast<HCURSOR>(LoadImageA(module.handle, MAKEINTRESOURCEA(id), IMAGE_CURSOR, 0, 0, LR_DEFAULTSIZE));
        ASSERT_NE(cursor, nullptr) << "cursor " << id;
        ICONINFO info{};
        ASSERT_TRUE(GetIconInfo(cursor, &info));
        EXPECT_FALSE(info.fIcon) << id;
        EXPECT_GT(info.xHotspot, 4u) << "the hot spot is in the palm";
        EXPECT_GT(info.yHotspot, 4u);
        if (info.hbmColor) DeleteObject(info.hbmColor);
        if (info.hbmMask) DeleteObject(info.hbmMask);
        DestroyCursor(cursor);
    }
    for (int size : art::kIconSizes) {
        HICON icon =
            static_cast<HICON>(LoadImageA(module.handle, MAKEINTRESOURCEA(art::kIcon), IMAGE_ICON, size, size, 0));
        ASSERT_NE(icon, nullptr) << "icon " << art::kIcon << " at " << size;
        ICONINFO info{};
        ASSERT_TRUE(GetIconInfo(icon, &info));
        BITMAP colour{};
        if (info.hbmColor) GetObjectA(info.hbmColor, sizeof colour, &colour);
        EXPECT_EQ(colour.bmWidth, size);
        if (info.hbmColor) DeleteObject(info.hbmColor);
        if (info.hbmMask) DeleteObject(info.hbmMask);
        DestroyIcon(icon);
    }
    const Bytes sound = Resource(module.handle, art::kAutoSound, "WAVE");
    ASSERT_NE(sound.data, nullptr) << "WAVE " << art::kAutoSound << " is missing";
    CheckAutoSound(sound.data, sound.size);
}
