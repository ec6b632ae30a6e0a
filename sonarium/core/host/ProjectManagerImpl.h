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

private:
    Host& m_host;
};
} // namespace sn
