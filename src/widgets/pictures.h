// SPDX-License-Identifier: GPL-3.0-or-later
// Resource names of pictures that several windows show. Constant data; any thread.
#pragma once

#include <QLatin1String>

// The program's own icon.
const QLatin1String logoPicture(":/pic/pic/logo.ico");
