#pragma once

#include <string>

#include <curl/curl.h>

namespace httpcore {

/// What is wrong with the certificate of a server.
enum class CertificateFault {
    None,
    NotYetValid,
    Expired,
    WrongPurpose, ///< Made for something else than serving.
    Untrusted,
    OtherName,     ///< Of another host, or a fault without a name of its own.
    BadAuthorities ///< The file of authorities holds no certificate.
};

/// Whether libcurl works on the TLS of Windows. What it accepts there is judged by `JudgeServer` instead: given a file
/// of authorities, libcurl takes a certificate that was made for another purpose, and none that names an address
/// instead of a host.
bool OnSchannel();

/// Judges the certificate of the connection that the transfer stands on, before anything is sent over it; only where
/// `OnSchannel`. Revocation is not looked up, there as elsewhere.
///
/// @param authorities  what the PEM file of the only ones to trust holds; null: those of the system.
/// @param words        what the system says, for texts.
CertificateFault JudgeServer(CURL* easy, const std::string* authorities, std::string& words);

} // namespace httpcore
