#pragma once
#include "Precompiled.h"

#include "../tests/support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
