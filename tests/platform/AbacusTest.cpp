#include <abacus/Abacus.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

TEST(Abacus, ReadsADocumentOfEveryKindOfMember)
{
    Abacus::Page page;
    ASSERT_TRUE(page.Parse(R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- of a server of the second series -->
<Page version="2.0" xmlns="urn:publish">
    <nameLength min="1" max="64"/>
    <playMode options="auto, fixed,,loop" default="auto"/>
    <playDurationS min="-5"/>
    <somethingNew><windowNum min="7" max="7"/></somethingNew>
    <windowList size="2">
        <window>
            <materialType options="picture,video"/>
            <num max="4" min="0"/>
            <switchEffect><effect options="fade"/><durationS min="1" max="60"/></switchEffect>
        </window>
        <note/>
        <window><num min="1" max="1"/></window>
    </windowList>
    <textStyle><fontName options="Serif,&#x95E8;&amp;x"/><isSptColor> true </isSptColor></textStyle>
    <isSptOverlap>1</isSptOverlap>
    <windowNum min="0" max="16"/>
    <windowNum min="9" max="9"/>
</Page>)"));
    EXPECT_TRUE(page.nameLength.Holds(64));
    EXPECT_FALSE(page.nameLength.Holds(65));
    EXPECT_THAT(page.playMode.options, ElementsAre("auto", "fixed", "loop"));
    EXPECT_EQ(page.playMode.defaultOption, "auto");
    EXPECT_TRUE(page.playMode.Offer("loop"));
    EXPECT_EQ(page.playDurationS.min, -5);
    EXPECT_TRUE(page.playDurationS.given);
    EXPECT_EQ(page.windowNum.max, 16) << "the first of two counts, and none of another place";
    ASSERT_EQ(page.windowList.size(), 2u);
    EXPECT_TRUE(page.windowList[0].materialType.Offer("video"));
    EXPECT_EQ(page.windowList[0].num.max, 4);
    EXPECT_EQ(page.windowList[0].switchEffect.durationS.max, 60);
    EXPECT_EQ(page.windowList[1].num.max, 1);
    EXPECT_THAT(page.textStyle.fontName.options, ElementsAre("Serif", "\xE9\x97\xA8&x"));
    EXPECT_TRUE(page.textStyle.isSptColor);
    EXPECT_TRUE(page.isSptOverlap);
    EXPECT_FALSE(page.pageSwitch.durationS.given) << "what is not said keeps its default";
}

TEST(Abacus, TextsAndNumbers)
{
    Abacus::ResponseStatus status;
    ASSERT_TRUE(status.Parse("<ResponseStatus><statusCode>4</statusCode><statusString><![CDATA[<no> & no]]>"
                             "</statusString><subStatusCode/><requestURL>&lt;x&gt;</requestURL></ResponseStatus>"));
    EXPECT_EQ(status.statusCode, 4);
    EXPECT_EQ(status.statusString, "<no> & no");
    EXPECT_EQ(status.subStatusCode, "");
    EXPECT_EQ(status.requestURL, "<x>");
    for (const char* number : {"", "four", "4x", "2147483648", "-99999999999999999999", "4.0", "0x4"}) {
        Abacus::ResponseStatus fresh;
        EXPECT_TRUE(
            fresh.Parse("<ResponseStatus><statusCode>" + std::string(number) + "</statusCode></ResponseStatus>"));
        EXPECT_EQ(fresh.statusCode, 0) << number;
    }
    Abacus::AdbDebugAbility debug;
    debug.isSptAdbDebug = true;
    ASSERT_TRUE(
        debug.Parse("<AdbDebugAbility><isSptAdbDebug>maybe</isSptAdbDebug><port min=\"x\"/></AdbDebugAbility>"));
    EXPECT_FALSE(debug.isSptAdbDebug) << "a document replaces all members";
    EXPECT_FALSE(debug.port.given);
}

TEST(Abacus, JsonSaysTheSame)
{
    Abacus::TerminalManagerCapability terminals;
    ASSERT_TRUE(terminals.Parse(R"( {"TerminalManagerCapability": {"isSptTerminal": true, "isSptUpgrade": "true",
        "terminalNum": {"min": 1, "max": 500, "step": 1}, "upgradeNum": {"min": 1.5}, "isSptUpgrade": true,
        "packageType": {"options": ["firmware", 7, "application"], "default": "firmware"}, "new": [[{}]]}})"));
    EXPECT_TRUE(terminals.isSptTerminal);
    EXPECT_FALSE(terminals.isSptUpgrade) << "a text is no truth value, and the first of two counts";
    EXPECT_EQ(terminals.terminalNum.max, 500);
    EXPECT_FALSE(terminals.upgradeNum.given);
    EXPECT_THAT(terminals.packageType.options, ElementsAre("firmware", "application"));
    Abacus::UserRoleCap roles;
    ASSERT_TRUE(roles.Parse(R"({"UserRoleCap": {"permissionList": [{"name": "upload", "isDefault": true}, {}, 3]}})"));
    ASSERT_EQ(roles.permissionList.size(), 3u);
    EXPECT_EQ(roles.permissionList[0].name, "upload");
}

/// A document with elements in each other.
std::string Nested(std::size_t levels, bool json)
{
    std::string open;
    std::string close;
    for (std::size_t i = 1; i < levels; ++i) {
        open += json ? "{\"x\":" : "<x>";
        close += json ? "}" : "</x>";
    }
    return json ? "{\"User\":{\"y\":" + open + "1" + close + "}}" : "<User>" + open + close + "</User>";
}

TEST(Abacus, WhatIsNotTheDocumentIsRefusedAndChangesNothing)
{
    const std::string refused[] = {
        "",
        " \r\n",
        "not a document",
        "<User>",
        "<User></Usr>",
        "<User/><User/>",
        "<User><userNum min=\"1\"></User>",
        "<user/>",
        "<Program/>",
        "<x:User/>",
        std::string("<User/>\0<x", 9),
        "<!DOCTYPE User><User/>",
        "<!DOCTYPE User [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]><User><userLevel options=\"&b;\"/></User>",
        "<!DOCTYPE User SYSTEM \"file:///etc/passwd\"><User/>",
        "{\"User\": {}",
        "{\"User\": {}} x",
        "{\"User\": []}",
        "{\"User\": {}, \"Program\": {}}",
        "{\"user\": {}}",
        "[{\"User\": {}}]",
        "{}",
        Nested(Abacus::kMaxDepth + 1, false),
        Nested(Abacus::kMaxDepth + 1, true),
        Nested(400000, false),
        Nested(400000, true),
        "<User>" + std::string(Abacus::kMaxBytes, ' ') + "</User>",
        "<ResponseStatus><statusCode>4</statusCode></ResponseStatus>",
    };
    Abacus::User user;
    ASSERT_TRUE(user.Parse("<User><userNum min=\"1\" max=\"16\"/><isSptDisable>true</isSptDisable></User>"));
    for (const std::string& document : refused) {
        EXPECT_FALSE(user.Parse(document)) << document.substr(0, 100);
        EXPECT_EQ(user.userNum.max, 16);
        EXPECT_TRUE(user.isSptDisable);
    }
    EXPECT_TRUE(user.Parse(Nested(Abacus::kMaxDepth, false)));
    EXPECT_TRUE(user.Parse(Nested(Abacus::kMaxDepth - 1, true)));
    EXPECT_TRUE(user.Parse("\xEF\xBB\xBF<User/>"));
    EXPECT_FALSE(user.userNum.given);
}

TEST(Abacus, LargeDocumentsAreReadInTimeThatGrowsWithThem)
{
    // As large as is taken: a list, words without end, and elements that nobody knows.
    constexpr std::size_t kCount = 40000;
    std::string windows;
    std::string words;
    std::string strangers;
    for (std::size_t i = 0; i < kCount; ++i) {
        windows += "<window><num min=\"1\" max=\"" + std::to_string(i) + "\"/></window>";
        words += "w" + std::to_string(i) + ",";
        strangers += "<x" + std::to_string(i) + "/>";
    }
    Abacus::Page page;
    ASSERT_TRUE(page.Parse("<Page><windowList>" + windows + "</windowList><playMode options=\"" + words + "\"/>" +
                           strangers + "</Page>"));
    ASSERT_EQ(page.windowList.size(), kCount);
    EXPECT_EQ(page.windowList.back().num.max, static_cast<std::int64_t>(kCount) - 1);
    EXPECT_EQ(page.playMode.options.size(), kCount);
    EXPECT_TRUE(page.playMode.Offer("w39999"));
}

} // namespace
