#pragma once

#include "core/Twips.h"
