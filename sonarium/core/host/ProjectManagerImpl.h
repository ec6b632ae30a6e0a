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
    bool AddToDefaultWorkUnit(IOrbObject* object) override;

private:
    Host& m_host;
};
} // namespace sn
