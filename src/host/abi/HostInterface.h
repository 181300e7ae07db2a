// The host's binary interface in one include, with its layout checks.
#pragma once

#include "host/abi/Types.h"
#include "host/abi/Constants.h"
#include "host/abi/FilterRecord.h"
#include "host/abi/Descriptors.h"
#include "host/abi/ChannelPorts.h"
#include "host/abi/Suites.h"
#include "host/abi/LayoutChecks.h"
