// Constants of exported classes: gcc leaves them out of a DLL unless something in it needs their address, and a program
// that does would not link.

#include "keel/FileSlice.h"

namespace {

[[gnu::used]] const void* const kEmitted[] = {&Keel::FileUtil::CFileSlice::kDefaultSliceBytes};

} // namespace
