#include "render/TextCodec.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "support/MessageFile.h"
#include "support/TextColumns.h"

namespace kesto {
namespace {

TEST(DecodeText, AsciiStaysAsItIs) {
    EXPECT_EQ(DecodeText("Retry"), QString("Retry"));
}

TEST(DecodeText, ValidUtf8IsReadAsUtf8) {
    EXPECT_EQ(DecodeText("\xE3\x83\x86\xE3\x82\xB9\xE3\x83\x88"), QString::fromUtf8("テスト"));
}

TEST(DecodeText, InvalidUtf8IsReadAsShiftJis) {
    EXPECT_EQ(DecodeText("\x83\x65\x83\x58\x83\x67"), QString::fromUtf8("テスト"));
}

TEST(DecodeText, EmptyTextGivesEmptyString) {
    EXPECT_TRUE(DecodeText("").isEmpty());
}

TEST(EncodeText, LeadingDigitsSurvive) {
    EXPECT_EQ(EncodeText("007 part"), "007 part");
}

// The Japanese sample's settings file, in Shift_JIS as the machine's tools save it, and the
// UTF-8 file it is made from.
const std::filesystem::path kJapaneseIni = "examples/ja/install/Kesto.ini";
const std::filesystem::path kJapaneseIniSource = "examples/ja/utf8/Kesto.ini";

// Every (section, key) of a message file up to [FileDefault], read from its lines.
std::vector<std::pair<std::string, std::string>> KeysOf(const std::filesystem::path& file) {
    std::vector<std::pair<std::string, std::string>> keys;
    std::string section;
    for (const std::string& line : test::ReadLines(file.string())) {
        if (line.rfind("[FileDefault]", 0) == 0)
            break;
        if (line.empty() || line[0] == ';')
            continue;
        if (line[0] == '[') {
            section = line.substr(1, line.find(']') - 1);
        } else if (const auto equals = line.find('='); equals != std::string::npos) {
            keys.emplace_back(section, line.substr(0, equals));
        }
    }
    return keys;
}

class JapaneseSample : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(shiftJis.Load((test::SourceDir() / kJapaneseIni).string(), op), 0);
        ASSERT_EQ(utf8.Load((test::SourceDir() / kJapaneseIniSource).string(), op), 0);
        ASSERT_TRUE(op.Messages.empty());
    }
    QString Caption(const std::string& section, const std::string& key) const {
        return DecodeText(shiftJis.GetFontText(section, key).Text);
    }
    test::RecordingOperator op;
    MessageTable shiftJis;
    MessageTable utf8;
};

TEST_F(JapaneseSample, SettingsFileIsShiftJisNotUtf8) {
    const std::string bytes = test::ReadFile((test::SourceDir() / kJapaneseIni).string());
    EXPECT_FALSE(IsValidUtf8(bytes));
    // "取置" as code page 932 writes it.
    EXPECT_NE(bytes.find("\x8E\xE6\x92\x75"), std::string::npos);
}

TEST_F(JapaneseSample, CaptionsDecodeToTheOperatorsWords) {
    EXPECT_EQ(Caption("MainDlg", "B-OK"), QString("OK"));
    EXPECT_EQ(Caption("MainDlg", "B-CAN"), QString::fromUtf8("取消"));
    EXPECT_EQ(Caption("KakuDlg", "ButtonCan"), QString::fromUtf8("キャンセル"));
    EXPECT_EQ(Caption("MainDlg", "L-TORIOKI"), QString::fromUtf8("取置"));
    EXPECT_EQ(Caption("MainDlg", "L-SMALLBOX"), QString::fromUtf8("小箱"));
    EXPECT_EQ(Caption("MainDlg", "L-PALLET-CAP"), QString::fromUtf8("パレット"));
    EXPECT_EQ(Caption("MainDlg", "B-BLOCKDRAW"), QString::fromUtf8("区画表示"));
    EXPECT_EQ(Caption("KakuDlg", "Msg209"),
              QString::fromUtf8("パレットのオフセットを越えた山があります。続けますか？"));
    EXPECT_EQ(Caption("PartsAlInfDlg", "BT3"), QString::fromUtf8("数量"));
}

TEST_F(JapaneseSample, EveryValueDecodesToItsUtf8Source) {
    const auto keys = KeysOf(test::SourceDir() / kJapaneseIniSource);
    ASSERT_GT(keys.size(), 90u);
    for (const auto& [section, key] : keys) {
        const std::string source = utf8.Get(section, key);
        ASSERT_NE(source, kMessageNotDefine) << section << " " << key;
        EXPECT_EQ(DecodeText(shiftJis.Get(section, key)), QString::fromStdString(source))
            << section << " " << key;
    }
}

}  // namespace
}  // namespace kesto
