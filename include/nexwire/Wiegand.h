#pragma once

#include "protocol/Common.h"
#include "protocol/Wiegand.h"

namespace nexwire {

/// Wiegand formats that the platform keeps. Any thread.
class NEXWIRE_API CGetWiegands {
public:
    /// All formats. True when the envelope parsed; `result` is untouched otherwise.
    static bool request(protocol::WiegandQueryResultListData& result);
};

/// Changes a Wiegand format. Any thread.
class NEXWIRE_API CSetWiegand {
public:
    /// @param result  one entry per device of the format; untouched unless the envelope parsed.
    static bool request(protocol::OperationResultListData& result, const protocol::WiegandModifyParam& param);
};

} // namespace nexwire
