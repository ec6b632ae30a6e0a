#pragma once
// The module's application object: one per loaded module, holding no explorer state.

#include "platform/Dialog.h"

class CExplorerApp : public CWinApp
{
public:
    BOOL InitInstance() override;
};

extern CExplorerApp theApp;
