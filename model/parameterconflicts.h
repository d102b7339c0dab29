#pragma once

#include "model/device.h"

/// What stands against writing: the support points of the speed curve (11, 12, 13) and of the current curve
/// (38, 39, 40) have to rise, with the user's value where there is one and the drive's otherwise.
/// One sentence per broken rule, joined by ", "; empty if there is none. It is a text for people, not a
/// refusal.
QString paramConflicts(const Z7DeviceParamSet &user, const Z7DeviceParamSet &device);
