#pragma once
// A picture of a sound's audio: the peaks of its source's samples across the widget, with the
// file's format and length written over it. Shows why when there is nothing to draw.

#include "sonarium/core/import/SourceAudio.h"

#include <QWidget>

namespace sn::qt
{
class WaveformWidget : public QWidget
{
    Q_OBJECT

public:
    explicit WaveformWidget(QWidget* parent = nullptr);

    // Reads what the object plays (a sound or a source); null shows nothing.
    void ShowObject(ProjectObject* object);
    const audio::SourceAudio& Audio() const { return m_audio; }
    QSize sizeHint() const override { return {240, 80}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Read();

    CSmartPtr<ProjectObject> m_object;
    audio::SourceAudio m_audio;
};
} // namespace sn::qt
