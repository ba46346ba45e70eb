#include "core/storage/Log.h"
