#include "link/station_message.h"
#include <gtest/gtest.h>
