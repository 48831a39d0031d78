#include "Application/InformationRelease/RawDocument.h"

namespace nexwire {

bool RawDocument(const std::string& deviceGuid, const protocol::KestrelPassThroughReq& request, core::Verdict verdict,
                 std::string& output, std::string& errorText) noexcept
{
    return core::Guard([&] {
        protocol::KestrelPassThroughRspData answer;
        if (!core::RunInto(Query(DevicePath(Route::External, deviceGuid, "/kestrelPassThrough"), request), answer,
                           verdict)) {
            const ExchangeRecord& exchange = LastExchange();
            errorText = exchange.parsed ? exchange.message : core::FailureOfLastExchange().text;
            return false;
        }
        protocol::KestrelPassThroughRsp& said = answer.kestrelPassThroughRsp;
        std::string& text = said.outBuffer.empty() ? said.statusBuffer : said.outBuffer;
        if (text.empty()) {
            errorText = "the device's answer is empty";
            return false;
        }
        output = std::move(text);
        return true;
    });
}

} // namespace nexwire
