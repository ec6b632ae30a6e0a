#pragma once
// The per-user settings store and the user preferences that the explorer reads.

#include "host/Guid.h"

#include <cstddef>

class IUserPreferencesReader
{
public:
    // The stored GUID in out, or defaultValue when absent.
    virtual void GetGUIDValue(GUID& out, const wchar_t* section, const wchar_t* key,
                              GUID const& defaultValue) const = 0;
    // Found: *data is a new buffer the caller frees with delete[], *size its length in bytes.
    virtual bool GetBinaryValue(const wchar_t* section, const wchar_t* key, unsigned char** data,
                                size_t* size) const = 0;
    virtual long long GetIntValue(const wchar_t* section, const wchar_t* key, long long defaultValue) const = 0;
    virtual bool GetStringValue(const wchar_t* section, const wchar_t* key, wchar_t const** value) const = 0;

protected:
    virtual ~IUserPreferencesReader() = default;
};

class IUserPreferencesWriter
{
public:
    virtual void SetBinaryValue(const wchar_t* section, const wchar_t* key, const unsigned char* data,
                                size_t size) = 0;
    virtual void SetGUIDValue(const wchar_t* section, const wchar_t* key, GUID const& value) = 0;
    virtual void SetIntValue(const wchar_t* section, const wchar_t* key, long long value) = 0;
    virtual void SetStringValue(const wchar_t* section, const wchar_t* key, const wchar_t* value) = 0;

protected:
    virtual ~IUserPreferencesWriter() = default;
};

class IUserPreferences : public IUserPreferencesReader, public IUserPreferencesWriter
{
public:
    // The store of the running host; null outside one.
    static IUserPreferences* Get();
};

namespace InspectUserPref
{
bool GetInspectOnSingleClick();
}

class EditorPreferences
{
public:
    static bool IsEventActionNamePrefix();
    static bool IsEventNameCaseAllLower();
    static bool IsModifyEventNameCase();
    static bool IsUseActionNameForEvent();
};
