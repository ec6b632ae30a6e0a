#include "platform/Canvas.h"

#include <cstdio>
#include <unordered_map>

HDC CanvasToHdc(ICanvas* canvas)
{
    return reinterpret_cast<HDC>(canvas);
}

ICanvas* HdcToCanvas(HDC hdc)
{
    return reinterpret_cast<ICanvas*>(hdc);
}

void RecordingCanvas::DrawImage(const void* image, const RectF& dest, const RECT& source)
{
    images.push_back(Image{image, dest, source});
    char line[160];
    std::snprintf(line, sizeof line, "image %g,%g %gx%g from %d,%d %dx%d", dest.x, dest.y, dest.width, dest.height,
                  source.left, source.top, source.right - source.left, source.bottom - source.top);
    calls.emplace_back(line);
}

void RecordingCanvas::FillRect(const RECT& rect, COLORREF colour)
{
    char line[120];
    std::snprintf(line, sizeof line, "fill %d,%d %dx%d #%06X", rect.left, rect.top, rect.right - rect.left,
                  rect.bottom - rect.top, colour);
    calls.emplace_back(line);
}

void RecordingCanvas::DrawText(const std::wstring& text, const RECT& rect, COLORREF colour)
{
    calls.emplace_back("text " + std::string(text.begin(), text.end()));
}

// A world transform without rotation: device = world * scale + offset.
class GpGraphics
{
public:
    explicit GpGraphics(ICanvas* canvas) : m_canvas(canvas) {}
    ICanvas* m_canvas;
    REAL m_sx = 1, m_sy = 1, m_dx = 0, m_dy = 0;
};

GpStatus GdipCreateFromHDC(HDC hdc, GpGraphics** graphics)
{
    if (!graphics)
        return InvalidParameter;
    *graphics = nullptr;
    ICanvas* canvas = HdcToCanvas(hdc);
    if (!canvas)
        return InvalidParameter;
    *graphics = new GpGraphics(canvas);
    return Ok;
}

GpStatus GdipDeleteGraphics(GpGraphics* graphics)
{
    delete graphics;
    return Ok;
}

GpStatus GdipTranslateWorldTransform(GpGraphics* g, REAL dx, REAL dy, GpMatrixOrder order)
{
    if (!g)
        return InvalidParameter;
    if (order == MatrixOrderPrepend)
    {
        // The translation applies in world space, before the current transform.
        g->m_dx += dx * g->m_sx;
        g->m_dy += dy * g->m_sy;
    }
    else
    {
        g->m_dx += dx;
        g->m_dy += dy;
    }
    return Ok;
}

GpStatus GdipScaleWorldTransform(GpGraphics* g, REAL sx, REAL sy, GpMatrixOrder order)
{
    if (!g)
        return InvalidParameter;
    if (order == MatrixOrderAppend)
    {
        g->m_dx *= sx;
        g->m_dy *= sy;
    }
    g->m_sx *= sx;
    g->m_sy *= sy;
    return Ok;
}

GpStatus GdipDrawImageRectRectI(GpGraphics* g, GpImage* image, INT dstx, INT dsty, INT dstwidth, INT dstheight,
                                INT srcx, INT srcy, INT srcwidth, INT srcheight, GpUnit, const GpImageAttributes*,
                                DrawImageAbort, void*)
{
    if (!g || !image)
        return InvalidParameter;
    const RectF dest{dstx * g->m_sx + g->m_dx, dsty * g->m_sy + g->m_dy, dstwidth * g->m_sx, dstheight * g->m_sy};
    g->m_canvas->DrawImage(image, dest, RECT{srcx, srcy, srcx + srcwidth, srcy + srcheight});
    return Ok;
}

namespace
{
std::unordered_map<std::uintptr_t, const void*>& Bitmaps()
{
    static auto* bitmaps = new std::unordered_map<std::uintptr_t, const void*>;
    return *bitmaps;
}
std::uintptr_t g_nextBitmap = 0x30000;
} // namespace

GpStatus GdipCreateHBITMAPFromBitmap(GpBitmap* bitmap, HBITMAP* result, ARGB)
{
    if (!bitmap || !result)
        return InvalidParameter;
    g_nextBitmap += 4;
    Bitmaps().emplace(g_nextBitmap, bitmap);
    *result = reinterpret_cast<HBITMAP>(g_nextBitmap);
    return Ok;
}

BOOL DeleteObject(HBITMAP bitmap)
{
    return Bitmaps().erase(reinterpret_cast<std::uintptr_t>(bitmap)) ? TRUE : FALSE;
}

const void* BitmapImage(HBITMAP bitmap)
{
    auto& bitmaps = Bitmaps();
    auto it = bitmaps.find(reinterpret_cast<std::uintptr_t>(bitmap));
    return it == bitmaps.end() ? nullptr : it->second;
}

size_t LiveBitmapCount()
{
    return Bitmaps().size();
}
