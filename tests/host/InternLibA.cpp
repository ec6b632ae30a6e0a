#include "host/ROString.h"

// Interned while this library is being loaded.
static const ROString s_channel("SharedChannel");

ROString InternedInLibraryA()
{
    return s_channel;
}
