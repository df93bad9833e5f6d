#pragma once

#include "support/FakePort.h"

using RecordingPort = FakePort;   // Not to be included together with the port driver of that name.
