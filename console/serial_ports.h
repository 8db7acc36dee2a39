#pragma once

// What whoever brings the serial device needs of the station link.
#include "link/port_numbers.h"
#include "link/serial_control.h"
