#include "sonarium/qt/DesktopSettings.h"

#include "sonarium/core/model/NodeRules.h"
#include "sonarium/qt/QtText.h"

#include <algorithm>

namespace sn::qt
{
namespace
{
const QString k_panesKey = QStringLiteral("Panes");
const QString k_titleKey = QStringLiteral("Title");
const QString k_categoriesKey = QStringLiteral("Categories");
} // namespace

QSettings DesktopSettings()
{
    return QSettings(QStringLiteral("Sonarium"), QStringLiteral("sonarium"));
}

std::vector<PaneDefinition> LoadPaneLayout()
{
    QSettings settings = DesktopSettings();
    std::vector<PaneDefinition> panes;
    const int count = settings.beginReadArray(k_panesKey);
    for (int i = 0; i < count; ++i)
    {
        settings.setArrayIndex(i);
        PaneDefinition pane{FromQt(settings.value(k_titleKey).toString().trimmed()), {}};
        for (QString const& key : settings.value(k_categoriesKey).toStringList())
        {
            OrbObjectCategories::Category category;
            if (rules::ParseCategory(key.toStdString(), category))
                pane.categories.insert(category);
        }
        const bool taken = std::any_of(panes.begin(), panes.end(),
                                       [&](PaneDefinition const& other) { return other.name == pane.name; });
        if (!pane.name.empty() && !taken && !pane.categories.empty())
            panes.push_back(std::move(pane));
    }
    settings.endArray();
    return panes;
}

void SavePaneLayout(std::vector<Pane> const& panes)
{
    QSettings settings = DesktopSettings();
    settings.remove(k_panesKey);
    settings.beginWriteArray(k_panesKey, static_cast<int>(panes.size()));
    for (size_t i = 0; i < panes.size(); ++i)
    {
        settings.setArrayIndex(static_cast<int>(i));
        settings.setValue(k_titleKey, ToQt(panes[i].name));
        QStringList keys;
        for (OrbObjectCategories::Category category : panes[i].categories)
            keys << QString::fromLatin1(rules::CategoryKey(category));
        settings.setValue(k_categoriesKey, keys);
    }
    settings.endArray();
}
} // namespace sn::qt
