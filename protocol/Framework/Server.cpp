#include "protocol/Framework/Server.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_RETURN_FIELDS(ServerPort, F(httpPort), F(httpsPort), F(messagePort), F(streamPort), F(alarmPort), F(storagePort))
NEXWIRE_RETURN_FIELDS(ServerPortData, F(serverPort))
NEXWIRE_INBOUND_FIELDS(Reboot, "reboot", F(delay), F(force), F(reason))
NEXWIRE_INBOUND_FIELDS(Setserverlang, "setserverlang", F(language))
NEXWIRE_INBOUND_FIELDS(SkinInfo, "skinInfo", F(skinName), F(accentColor), F(scale), F(highContrast))
NEXWIRE_INBOUND_FIELDS(EmailAttachment, "emailAttachment", F(fileName), F(filePath))
NEXWIRE_INBOUND_FIELDS(Email, "email", F(receiverList), F(copyList), F(subject), F(content), F(isHtml), F(attachmentList))
NEXWIRE_INBOUND_FIELDS(Dclog, "dclog", F(report))
NEXWIRE_RETURN_FIELDS(DclogRsp, F(dclogGuid), F(receiveTime), F(size))
NEXWIRE_RETURN_FIELDS(DclogRspData, F(dclogRsp))
NEXWIRE_INBOUND_FIELDS(TemplateTest, "templateTest", F(templateName), F(language), F(valueList))
NEXWIRE_RETURN_FIELDS(TemplateTestRsp, F(templateName), F(content), F(unfilledList))
NEXWIRE_RETURN_FIELDS(TemplateTestRspData, F(templateTestRsp))
// clang-format on

} // namespace protocol
