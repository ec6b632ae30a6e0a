#pragma once
// The open project as modules see it.

#include "host/OrbObject.h"
#include "host/OrbObjectCategories.h"
#include "host/SmartPtr.h"
#include "host/StdStr.h"

#include <map>
#include <set>
#include <vector>

class IProjectLoadProgress;

namespace sn
{
// Orders wide strings without regard to case (file and work-unit names).
struct NoCaseStringComp
{
    bool operator()(const CStdStr<wchar_t>& a, const CStdStr<wchar_t>& b) const { return a.CompareNoCase(b.c_str()) < 0; }
};
} // namespace sn

using OrbObjectSmartPtr = CSmartPtr<IOrbObject>;

namespace PersistResult
{
enum PersistResult : int
{
    Success = 0,
    Failed = 1,    // some work units could not be loaded or unloaded; the progress dialog says which
    Cancelled = 2, // the user stopped it; what was done stays done
};
} // namespace PersistResult

class ProjectManager
{
public:
    enum ProjectManagerResult : int
    {
        Result_OK = 0,
        Result_Failed = 1,
    };

    static ProjectManager* m_pInstance; // null when no host runs

    // The top work unit of a category; false and a null pointer when there is none.
    virtual bool GetTopWorkUnit(OrbObjectCategories::Category category, CSmartPtr<IOrbWorkUnit>& out) const = 0;
    // The top work unit that contains an object.
    virtual bool GetTopWorkUnit(IOrbObject* object, CSmartPtr<IOrbWorkUnit>& out) const = 0;
    // Adds a new object to the work unit that receives new objects of its kind.
    virtual bool AddToDefaultWorkUnit(IOrbObject* object) = 0;
    // The platform the user works on now (GUID_NULL without a project).
    virtual GUID GetCurrentPlatform() const = 0;
    // The project's file, empty while it has none.
    virtual CStdStr<wchar_t> GetProjectPath() const = 0;
    // Writes the project's changes to disk. names: the work units that must be written (empty: all
    // that changed). results receives, per file that failed, Result_Failed. Result_OK when
    // everything was written.
    virtual ProjectManagerResult SaveProject(std::map<CStdStr<wchar_t>, ProjectManagerResult>& results,
                                             const std::set<CStdStr<wchar_t>, sn::NoCaseStringComp>& names) = 0;
    // Loads or unloads work units as the user asked, reporting to progress (may be null). Both
    // clear the undo history and the clipboard when anything was loaded or unloaded.
    virtual PersistResult::PersistResult UserLoadWorkUnits(const std::vector<OrbObjectSmartPtr>& units,
                                                           IProjectLoadProgress* progress) = 0;
    virtual PersistResult::PersistResult UserUnloadWorkUnits(const std::vector<OrbObjectSmartPtr>& units,
                                                             IProjectLoadProgress* progress) = 0;

protected:
    virtual ~ProjectManager() = default;
};
