#pragma once

#include "platform/WindowSystem.h"

#include <gtest/gtest.h>

// Every test starts from an empty queue, no timers, no keys and the clock at zero.
class PlatformTest : public ::testing::Test
{
protected:
    void SetUp() override { WindowSystem::Get().Reset(); }
    void TearDown() override { WindowSystem::Get().Reset(); }
    WindowSystem& Sys() { return WindowSystem::Get(); }
};
