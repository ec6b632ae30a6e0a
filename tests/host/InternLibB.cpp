#include "host/ROString.h"

#include <string>

static const ROString s_channel(std::string("Shared") + "Channel");

ROString InternedInLibraryB()
{
    return s_channel;
}
