#pragma once
// The host's windows that modules talk to.

class CWnd;

CWnd* SonariumGetMainWnd();          // may be null
CWnd* GetTopMostWndForMsgBox();      // parent for message boxes
void BringApplicationToTop();
