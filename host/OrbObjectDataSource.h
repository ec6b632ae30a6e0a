#pragma once
// The drag data of project objects: an in-process data source that holds references to the
// objects a view drags.

#include "host/OrbObject.h"
#include "host/SmartPtr.h"
#include "platform/Ole.h"

#include <vector>

// Where a drag of objects starts; 0 is a project tree.
enum SonariumDragSource
{
    SonariumDragSource_ProjectTree = 0,
};

class SelfDataSource : public COleDataSource
{
};

class COrbObjectDataSource : public SelfDataSource
{
public:
    COrbObjectDataSource(SonariumDragSource kind, HWND owner) : m_kind(kind), m_owner(owner) {}

    // Holds its own references to the objects.
    void Init(const std::vector<IOrbObject*>& objects);
    // The data source behind a drag of project objects, else null.
    static COrbObjectDataSource* Get(COleDataObject* data);
    std::vector<IOrbObject*> IOrbObjects() const;
    SonariumDragSource Kind() const { return m_kind; }
    HWND Owner() const { return m_owner; }

private:
    SonariumDragSource m_kind;
    HWND m_owner;
    std::vector<CSmartPtr<IOrbObject>> m_objects;
};
