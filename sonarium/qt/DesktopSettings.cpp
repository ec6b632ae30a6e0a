#include "sonarium/qt/DesktopSettings.h"

#include "host/Guid.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/qt/QtText.h"

#include <QCryptographicHash>

#include <algorithm>

namespace sn::qt
{
namespace
{
constexpr int k_recentCount = 8;
const QString k_recentKey = QStringLiteral("RecentProjects");
const QString k_lastProjectKey = QStringLiteral("LastProject");
const QString k_platformsGroup = QStringLiteral("ProjectPlatforms");
const QString k_panesKey = QStringLiteral("Panes");
const QString k_titleKey = QStringLiteral("Title");
const QString k_categoriesKey = QStringLiteral("Categories");

// The form a project's path is remembered in: absolute and without "." or "..".
QString Entry(std::filesystem::path const& path)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return ToQt((error ? path : absolute).lexically_normal().wstring());
}

// A settings key of the project's path ('/' would open groups).
QString ProjectKey(std::filesystem::path const& project)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(Entry(project).toUtf8(), QCryptographicHash::Sha1).toHex());
}
} // namespace

QSettings DesktopSettings()
{
    return QSettings(QStringLiteral("Sonarium"), QStringLiteral("sonarium"));
}

void UseSettingsFolder(std::filesystem::path const& folder)
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, ToQt(folder.wstring()));
}

std::filesystem::path LastProject()
{
    return std::filesystem::path(FromQt(DesktopSettings().value(k_lastProjectKey).toString()));
}

QStringList RecentProjects()
{
    return DesktopSettings().value(k_recentKey).toStringList();
}

void RememberProject(std::filesystem::path const& path)
{
    const QString entry = Entry(path);
    QSettings settings = DesktopSettings();
    QStringList recent = settings.value(k_recentKey).toStringList();
    recent.removeAll(entry);
    recent.prepend(entry);
    while (recent.size() > k_recentCount)
        recent.removeLast();
    settings.setValue(k_recentKey, recent);
    settings.setValue(k_lastProjectKey, entry);
}

GUID LastPlatform(std::filesystem::path const& project)
{
    const QString text = DesktopSettings().value(k_platformsGroup + QLatin1Char('/') + ProjectKey(project)).toString();
    return GuidText::FromString(text.toStdString()).value_or(GUID_NULL);
}

void RememberPlatform(std::filesystem::path const& project, GUID const& platform)
{
    DesktopSettings().setValue(k_platformsGroup + QLatin1Char('/') + ProjectKey(project),
                               QString::fromStdString(GuidText::ToString(platform)));
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
