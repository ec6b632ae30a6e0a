#pragma once
// The host's project manager as modules see it, over the running host's project.

#include "host/ProjectManager.h"

namespace sn
{
class Host;

class ProjectManagerImpl : public ProjectManager
{
public:
    explicit ProjectManagerImpl(Host& host) : m_host(host) {}

    bool GetTopWorkUnit(OrbObjectCategories::Category category, CSmartPtr<IOrbWorkUnit>& out) const override;
    bool GetTopWorkUnit(IOrbObject* object, CSmartPtr<IOrbWorkUnit>& out) const override;
    // Into the category's "Default Work Unit", made when the category has none.
    bool AddToDefaultWorkUnit(IOrbObject* object) override;

    GUID GetCurrentPlatform() const override;
    CStdStr<wchar_t> GetProjectPath() const override;
    // workunits/WorkUnitLoading.cpp: saving, loading and unloading as the user asks.
    ProjectManagerResult SaveProject(std::map<CStdStr<wchar_t>, ProjectManagerResult>& results,
                                     const std::set<CStdStr<wchar_t>, sn::NoCaseStringComp>& names) override;
    PersistResult::PersistResult UserLoadWorkUnits(const std::vector<OrbObjectSmartPtr>& units,
                                                   IProjectLoadProgress* progress) override;
    PersistResult::PersistResult UserUnloadWorkUnits(const std::vector<OrbObjectSmartPtr>& units,
                                                     IProjectLoadProgress* progress) override;

private:
    PersistResult::PersistResult Persist(const std::vector<OrbObjectSmartPtr>& units, IProjectLoadProgress* progress,
                                         bool load);

    Host& m_host;
};
} // namespace sn
