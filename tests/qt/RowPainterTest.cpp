// Rows draw what the tree control says of them: a source-control overlay over a work unit's icon,
// the icon of a work unit whose file failed to load, and voices excluded in a language dimmed.

#include "host/ObjectIcons.h"
#include "sonarium/qt/TreeRowPainter.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace
{
QImage Paint(PETreeRow const& row)
{
    QImage image(64, 20, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    sn::qt::TreePalette palette;
    palette.selection = Qt::blue;
    palette.selectionText = Qt::white;
    palette.cutText = Qt::gray;
    sn::qt::PaintRows(painter, {row}, palette, false);
    return image;
}

PETreeRow WorkUnitRow()
{
    PETreeRow row;
    row.row = {0, 0, 64, 20};
    row.icon = {2, 2, 18, 18};
    row.label = {20, 0, 64, 20};
    row.iconType = ObjectIcons::IconType_WorkUnit;
    return row;
}

// A point of the overlays' badge, in the icon's lower left corner, clear of its white glyph.
QColor Badge(QImage const& image)
{
    return image.pixelColor(2 + 5, 2 + 14);
}
} // namespace

TEST(RowPainter, OverlaysAndUnreadableUnitsHaveTheirOwnArt)
{
    const PETreeRow plain = WorkUnitRow();
    PETreeRow added = plain, modified = plain, unversioned = plain;
    added.overlay = ObjectIcons::IconType_OverlayAdded;
    modified.overlay = ObjectIcons::IconType_OverlayModified;
    unversioned.overlay = ObjectIcons::IconType_OverlayUnversioned;
    const QColor green = Badge(Paint(added)), orange = Badge(Paint(modified)), grey = Badge(Paint(unversioned));
    EXPECT_GT(green.green(), green.red() + 60) << "added: a green badge";
    EXPECT_GT(orange.red(), orange.blue() + 60) << "modified: an orange badge";
    EXPECT_LT(std::abs(grey.red() - grey.blue()), 40) << "unversioned: a grey badge";
    EXPECT_NE(Badge(Paint(plain)), green);

    PETreeRow unreadable = plain;
    unreadable.iconType = ObjectIcons::IconType_WorkUnitUnreadable;
    const QColor mark = Paint(unreadable).pixelColor(2 + 11, 2 + 14);
    EXPECT_GT(mark.red(), mark.green() + 60) << "a red mark over the unit's page";

    // A voice excluded in the current language is drawn as an excluded object is.
    PETreeRow voice = plain, excluded = plain, languageExcluded = plain;
    voice.iconType = excluded.iconType = languageExcluded.iconType = ObjectIcons::IconType_SoundVoice;
    excluded.excluded = true;
    languageExcluded.languageExcluded = true;
    EXPECT_EQ(Paint(languageExcluded), Paint(excluded));
    EXPECT_NE(Paint(languageExcluded), Paint(voice));
}
