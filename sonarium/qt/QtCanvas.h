#pragma once
// The host's drawing calls on a QPainter. Images are the theme's icon bitmaps.

#include "platform/Canvas.h"

class QPainter;

namespace sn::qt
{
class QtCanvas : public ICanvas
{
public:
    explicit QtCanvas(QPainter& painter) : m_painter(painter) {}

    void DrawImage(const void* image, const RectF& dest, const RECT& source) override;
    void FillRect(const RECT& rect, COLORREF colour) override;
    void DrawText(const std::wstring& text, const RECT& rect, COLORREF colour) override;

    HDC Hdc() { return CanvasToHdc(this); }

private:
    QPainter& m_painter;
};
} // namespace sn::qt
