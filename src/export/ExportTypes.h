#pragma once

#include "frame/ExportTypes.h"  // every export has these kinds and outcomes
