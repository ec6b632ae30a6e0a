#include "module/ExplorerApp.h"

CExplorerApp theApp;

BOOL CExplorerApp::InitInstance()
{
    CWinApp::InitInstance();
    return TRUE;
}
