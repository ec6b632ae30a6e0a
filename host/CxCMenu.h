#pragma once
// The host's popup menu. An item's icon, given with SetMenuItemInfo and MIIM_BITMAP, stays on
// the menu's item data, where the menu's painter finds it; nothing else is needed here.

#include "platform/Menu.h"

class CxCMenu : public CMenu
{
};
