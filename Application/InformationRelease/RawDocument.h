#pragma once

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

/// What a device says to a raw request of its HTTP interface, for the functions that hand it out: its document, or its
/// status where there is no document. False when it says nothing, or the exchange failed.
///
/// @param verdict    whether a refusing envelope fails.
/// @param errorText  receives why on failure.
bool RawDocument(const std::string& deviceGuid, const protocol::KestrelPassThroughReq& request, core::Verdict verdict,
                 std::string& output, std::string& errorText) noexcept;

} // namespace nexwire
