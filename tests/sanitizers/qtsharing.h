// Included before everything else in thread sanitizer builds.
//
// Qt's implicitly shared classes ask with a relaxed load whether another copy is alive, before they write in
// place. The thread that let go of its copy has read it before, but a relaxed load does not say so to the
// sanitizer. An acquiring load does, and is no slower on the machines that the project is built for.
#pragma once

#include <QtCore/qatomic.h>

#define loadRelaxed loadAcquire
#include <QtCore/qrefcount.h>
#include <QtCore/qshareddata.h>
#undef loadRelaxed
