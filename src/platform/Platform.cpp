#include "platform/TextRange.h"
