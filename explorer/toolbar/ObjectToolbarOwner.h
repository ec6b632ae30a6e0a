#pragma once

#include "host/PMTreeNode.h"

// How the object toolbar reaches the view that owns it.
class IObjectToolbarOwner
{
public:
    virtual void OnButtonClicked(PMTreeNode::NodeType type) = 0;

protected:
    virtual ~IObjectToolbarOwner() = default;
};
