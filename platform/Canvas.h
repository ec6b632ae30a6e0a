#pragma once
// Drawing. Code draws through ICanvas; the GDI+ flat calls that the explorer makes are
// provided over it, with a device context (HDC) standing for a canvas. The desktop
// application paints on a QPainter; tests use RecordingCanvas.

#include "platform/WinTypes.h"

#include <string>
#include <vector>

struct RectF
{
    float x = 0;
    float y = 0;
    float width = 0;
    float height = 0;
};

class ICanvas
{
public:
    virtual ~ICanvas() = default;
    // Draws the source rectangle of an image (an opaque handle the painter resolves) into a
    // destination rectangle in device coordinates.
    virtual void DrawImage(const void* image, const RectF& dest, const RECT& source) = 0;
    virtual void FillRect(const RECT& rect, COLORREF colour) = 0;
    virtual void DrawText(const std::wstring& text, const RECT& rect, COLORREF colour) = 0;
};

HDC CanvasToHdc(ICanvas* canvas);
ICanvas* HdcToCanvas(HDC hdc);

// Records each call as a line of text, for tests.
class RecordingCanvas : public ICanvas
{
public:
    void DrawImage(const void* image, const RectF& dest, const RECT& source) override;
    void FillRect(const RECT& rect, COLORREF colour) override;
    void DrawText(const std::wstring& text, const RECT& rect, COLORREF colour) override;

    struct Image
    {
        const void* image;
        RectF dest;
        RECT source;
    };
    std::vector<Image> images;
    std::vector<std::string> calls;
};

// The GDI+ flat interface, as far as the explorer uses it.
enum GpStatus
{
    Ok = 0,
    GenericError = 1,
    InvalidParameter = 2,
};
enum GpMatrixOrder
{
    MatrixOrderPrepend = 0,
    MatrixOrderAppend = 1,
};
enum GpUnit
{
    UnitWorld = 0,
    UnitDisplay = 1,
    UnitPixel = 2,
};
using REAL = float;
using INT = int;
using ARGB = DWORD;
class GpGraphics;
class GpImage;
class GpBitmap;
class GpImageAttributes;
using DrawImageAbort = BOOL (*)(void*);

GpStatus GdipCreateFromHDC(HDC hdc, GpGraphics** graphics);
GpStatus GdipDeleteGraphics(GpGraphics* graphics);
GpStatus GdipTranslateWorldTransform(GpGraphics* graphics, REAL dx, REAL dy, GpMatrixOrder order);
GpStatus GdipScaleWorldTransform(GpGraphics* graphics, REAL sx, REAL sy, GpMatrixOrder order);
GpStatus GdipDrawImageRectRectI(GpGraphics* graphics, GpImage* image, INT dstx, INT dsty, INT dstwidth,
                                INT dstheight, INT srcx, INT srcy, INT srcwidth, INT srcheight, GpUnit srcUnit,
                                const GpImageAttributes* attributes, DrawImageAbort callback, void* callbackData);
// A bitmap handle for an image (a menu item's picture); free it with DeleteObject.
GpStatus GdipCreateHBITMAPFromBitmap(GpBitmap* bitmap, HBITMAP* result, ARGB background);
BOOL DeleteObject(HBITMAP bitmap);
// The image behind a bitmap handle, or null once deleted, and how many handles are live.
const void* BitmapImage(HBITMAP bitmap);
size_t LiveBitmapCount();
