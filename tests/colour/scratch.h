#pragma once
#include "../support/scratch.h"
