#pragma once
// The host's importer of SoundBank definition files: text files that name, line by line, a
// SoundBank and an object to put in it.

#include "host/StdStr.h"

class IOrbObject;

class SBDefinitionImporterUI
{
public:
    SBDefinitionImporterUI();
    ~SBDefinitionImporterUI();
    SBDefinitionImporterUI(const SBDefinitionImporterUI&) = delete;
    SBDefinitionImporterUI& operator=(const SBDefinitionImporterUI&) = delete;

    // Applies the file to the project: missing SoundBanks are created under target (or the first
    // SoundBanks work unit when target cannot hold them), and the user is told what was done and
    // which lines could not be applied. True when every line was applied.
    bool ImportSoundBankDefinition(const CStdStr<wchar_t>& path, IOrbObject* target);
};
