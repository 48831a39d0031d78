// As KeelConstants.cpp.

#include "nexwire/RequestRecords.h"
#include "nexwire/VideoWall/VideoWall.h"

namespace {

[[gnu::used]] const void* const kEmitted[] = {&nexwire::RequestParams::kDefaultTimeoutMs,
                                              &nexwire::CTWDeviceCommon::kNetworkFailure};

} // namespace
