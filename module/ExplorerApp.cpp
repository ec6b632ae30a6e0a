#include "module/ExplorerApp.h"

CExplorerApp theApp;

BOOL CExplorerApp::InitInstance()
{
    CWinApp::InitInstance();
    return TRUE;
}

AFX_MODULE_STATE* AfxGetStaticModuleState()
{
    static AFX_MODULE_STATE state{theApp.m_hInstance};
    return &state;
}

