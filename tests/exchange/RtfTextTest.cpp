#include "exchange/RtfText.h"

#include "support/Cases.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

using namespace Qt::StringLiterals;

namespace {

using Row = Case<QByteArray, QString>;

QString textOf(const QByteArray &document)
{
    return RtfText::plainText(document).value_or(u"(not Rich Text)"_s);
}

QString textOfBody(const QByteArray &body)
{
    return textOf(R"({\rtf1\ansi )" + body + "}");
}

void expectTexts(const QList<Row> &rows, QString (*read)(const QByteArray &rtf) = textOfBody)
{
    for (const auto &[fault, rtf, text] : rows)
        EXPECT_EQ(read(rtf), text) << fault;
}

TEST(RtfText, ReadsTheRunningText)
{
    expectTexts({
        {"control characters get through",
            QByteArray("a\0\x01\x1F\x7F", 5) + R"(\'00\'1f\'7f\u0?\u27?\u31?\u127?\u159?b)", u"ab"_s},
        {"digits of a byte", R"(\'E9\'eA\'fF\'x1b\'1gc\'G1)", u"éêÿ\uFFFDx1b\uFFFD1gc\uFFFDG1"_s},
        // Unicode
        {"odd numbers of fallbacks", R"(\uc-5\u65 ?\uc\u66 ?\uc99\u67 ????)", u"A?BC"_s},
        {"fallback is sought beyond the group", R"(\uc3{\u65 ?}abc\u66 {def})", u"AabcBdef"_s},
        {"paragraph end is taken for a fallback", "\\u65\\par b\\u66\\\nc\\u67\\cell\\u68\\row", u"A\nbB\ncC\tD\n"_s},
        {"next character is taken for a fallback", R"(\u65\u66 ?c)", u"ABc"_s},
        {"code points and numbers out of range",
            R"(\u128512?\u1114111?\u1114112?\u4294967361?\u-99999999999999999999?\u-32769?\u-32768?)",
            u"\U0001F600\U0010FFFF\uFFFD\uFFFD\uFFFD\uFFFD\u8000"_s},
        {"lone surrogates", R"(\u-10179?a\u-8704?\u-8704?\u55357?\u55357?\u56832?\u56832?)",
            u"\uFFFDa\uFFFD\uFFFD\uFFFD\U0001F600\uFFFD"_s},
        // Groups with text that isn't running text, or is
        {"list number is lost", R"({\pntext\f0 1.\tab}{\*\pn\pnlvlbody{\pntxta .}}a)", u"1.\ta"_s},
        {"text box is lost or doubled",
            R"(a{\shp{\*\shpinst{\sp{\sv 1}}{\shptxt b\par}}{\shprslt{\*\do{\dptxbxtext b}}}}c)", u"a\nb\nc"_s},
        {"text box begins with an empty line", R"({\shptxt a\par}{\shptxt b})", u"a\nb"_s},
        {"formula is lost or doubled",
            R"({\mmath{\*\moMath{\mr x}{\md{\mdPr{\mbegChr (}}{\me{\mr y}}}}{\mmathPict{\pict 00}}})", u"xy"_s},
        {"text after the document", "a}b{c}", u"a"_s},
        // List labels
        {"empty label indents the heading", R"(a\par{\listtext\pard\plain \tab}b)", u"a\nb"_s},
        {"empty label of old writers indents", R"({\pntext\f0\'20\tab}b)", u"b"_s},
        {"number goes with its blanks", R"({\listtext\tab 1.\tab}b)", u"\t1.\tb"_s},
        {"inner group is taken for the label", R"({\listtext{\b\tab}1.{\b\tab}}b)", u"\t1.\tb"_s},
        {"blanks before go with the label", R"(a \'20{\listtext\tab}\tab b)", u"a  \tb"_s},
        {"half of a pair before is lost", R"(\u-10179?{\listtext\tab}\u-8704?)", u"\U0001F600"_s},
        {"dropped cell is taken for the last of a row", R"({\listtext\cell}b\row c)", u"b\nc"_s},
        {"cell before a dropped label is forgotten", R"(a\cell{\listtext\tab}\row b)", u"a\nb"_s},
        {"label in no group takes all blanks", R"( \listtext b\tab)", u" b\t"_s},
        // Tables
        {"row ends in a tab", R"(\trowd a\cell b\cell\row c\cell d\cell{\row}e)", u"a\tb\nc\td\ne"_s},
        {"empty cells shift the columns", R"(\cell b\cell\cell\row)", u"\tb\t\n"_s},
        {"second row end is lost", R"(a\cell\row\row b)", u"a\n\nb"_s},
        {"bytes come after their cell", R"(\ansicpg932 a\cell\'95\'5c\row b)", u"a\t表\nb"_s},
        {"tab of the text is taken for a cell", R"(a\cell b\tab\row)", u"a\tb\t\n"_s},
        {"nested row is lost or doubled",
            R"(a\nestcell b\nestcell{\*\nesttableprops\trowd\nestrow}{\nonesttables\par}c\cell d\cell\row)",
            u"a\tb\nc\td\n"_s},
    });
}

QByteArray withFonts(const QByteArray &body)
{
    return R"(\ansicpg1251\deff1{\fonttbl{\f0\fcharset0 Arial;}{\f1\fcharset204{\*\falt x}Arial Cyr;})"
           R"({\f2\fcharset128 Mincho;}{\f3\fcharset2 Symbol;}{\f4\fcharset2 Wingdings 2;}{\f5\fcharset1 Any;})"
           R"({\f6\fcharset0\cpg1253 Greek;}{\f7\fcharset2 Doulos;}\f8\fcharset238 Loose;\f31506\fcharset177 H;})"
        + body;
}

TEST(RtfText, ReadsFontsAndCodePages)
{
    expectTexts({
        {"default font is ignored", withFonts(R"(\'e6)"), u"ж"_s},
        {"character set is ignored", withFonts(R"(\f0\'e6\f8\'e6\f31506\'e0)"), u"æćא"_s},
        {"font outlives its group", withFonts(R"({\f0\'e6}\'e6\f0\plain\'e6)"), u"æжж"_s},
        {"code page of the font is ignored", withFonts(R"(\f6\'e6)"), u"ζ"_s},
        {"default character set is western", withFonts(R"(\f5\'e6\f99\'e6\f-7\'e6\f999999999\'e6)"), u"жжжж"_s},
        {"pair is joined across fonts", withFonts(R"(\f2\'95\f0\'5c)"), u"\uFFFD\\"_s},
        {"first half swallows a paragraph end", withFonts(R"(\f2\'95\par\'95\u65?\'95)"), u"\uFFFD\n\uFFFDA\uFFFD"_s},
        {"greek of the symbol font is latin", withFonts(R"(\f3 ab\'b7\u-3913?\u-3999?\u-3841?\u-3840?)"),
            u"αβ••α\uFFFD\uF100"_s},
        {"bullets of dingbats are letters",
            withFonts(R"(\f4\'4a\'4c\'6c\'6e\'6f\'71\'72\'75\'76\'9f\'a0\'a7\'a8\'d8\'df\'e0\'e1\')"
                      R"(e2\'e8\'f0\'fb\'fc\'fd\'fe\u-3932?z\u-4064?\u-4065?)"),
            u"☺☹●■□❑❒◆❖•\u00A0▪◻➢←→↑↓➔⇨✘✔☒☑\uFFFD\uFFFD \uF01F"_s},
        {"lettered symbol font is greek", withFonts(R"(\f7 ab\'e6)"), u"abж"_s},
        {"symbols outlive their font", withFonts(R"({\fonttbl\f8\fcharset2 Any;\f9 Symbol;}\f9 a)"), u"a"_s},
        {"unknown code page is taken", withFonts(R"({\fonttbl\f9\fcharset238\cpg9999 x;}\f9\'e6)"), u"ć"_s},
        {"hostile font numbers",
            R"({\fonttbl\f2147483647\fcharset204;\f-5\fcharset204;\f65536\fcharset204;\f65535\fcharset204;})"
            R"(\f2147483647\'e6\f65536\'e6\f65535\'e6\f-5\'e6)",
            u"ææжæ"_s},
        {"without any code page", R"(\'80\'e9\'81)", u"€é\uFFFD"_s},
        {"named by a word", R"(\mac\'8e\pc\'82\pca\'d5)", u"ééı"_s},
        {"unknown is western", R"(\ansicpg4711\'e9\ansicpg-1\'e9\ansicpg0\'e9\ansicpg1200\'e9)", u"éééé"_s},
        {"bytes without character",
            R"(\ansicpg932\'8e\'a9\'c0\'a0\ansicpg936\'80\'ff\ansicpg1252\'a0\ansicpg949\'80\ansicpg10081\'f5\'f0)",
            u"自ﾀ\uFFFD€\uFFFD\u00A0\uFFFD\uFFFD\uF8FF"_s},
        {"UTF-8", "\\ansicpg65001\\'e4\\'b8\xAD\xF0\x9F\x98\x80\\'e4\\'b8x\\'c0", u"中\U0001F600\uFFFDx\uFFFD"_s},
    });
}

TEST(RtfText, ReadsDocumentsThatAreCutOff)
{
    expectTexts(
        {{"blanks before are refused", " \r\n\t{\\rtf1 a}", u"a"_s},
            {"byte-order mark is refused", "\xEF\xBB\xBF\n{\\rtf1 a}", u"a"_s},
            {"empty document is refused", R"({\rtf})", u""_s}, {"nothing is taken", "", u"(not Rich Text)"_s},
            {"plain text is taken", R"(a {\rtf1 b})", u"(not Rich Text)"_s}, {"group", R"({\rtf1 a{b{\v c)", u"ab"_s},
            {"backslash", R"({\rtf1 a\)", u"a"_s}, {"byte", R"({\rtf1 a\'6)", u"a"_s},
            {"end of a byte", R"({\rtf1 a\'62)", u"ab"_s}, {"sign", R"({\rtf1 a\fs-)", u"a-"_s},
            {"number", R"({\rtf1 a\b-x\fs-5)", u"a-x"_s}, {"pair of bytes", R"({\rtf1\ansicpg932 a\'95)", u"a\uFFFD"_s},
            {"fallback", R"({\rtf1\uc9 a\u65 ?)", u"aA"_s}, {"row", R"({\rtf1 a\cell b\cell)", u"a\tb\t"_s},
            {"binary data", R"({\rtf1 a\bin2147483647 xyz)", u"a"_s},
            {"left out group", R"({\rtf1 a{\pict{\bin99999999999 }}b})", u"a"_s}},
        textOf);
}

TEST(RtfText, ReadsGroupsOfAnyDepthAndPairsOfBytesAcrossItsOwnBuffers)
{
    const QByteArray opening = QByteArray(R"({\f1\v0 )").repeated(300'000);
    const QByteArray ends(300'000, '}');
    EXPECT_EQ(textOfBody("a" + opening + "b" + ends + "c"), u"abc"_s);
    EXPECT_EQ(textOfBody(R"(a{\pict)" + opening + "b" + ends + "}c"), u"ac"_s);
    // Each of these labels would be looked through from the first blank on.
    EXPECT_EQ(textOfBody("a" + QByteArray(R"({\listtext)").repeated(60'000) + QByteArray(4'000'000, ' ') + "b" + ends),
        u'a' + QString(4'000'000 - 1, u' ') + u'b');
    EXPECT_EQ(textOfBody(R"(\ansicpg932 x)" + QByteArray("\\'95\\'5c\x92\x86").repeated(9'999)),
        u'x' + u"表中"_s.repeated(9'999));
    EXPECT_EQ(textOfBody(R"(\ansicpg65001 )" + QByteArray(4095, 'x') + "\xE4" + QByteArray(4096, 'y')),
        QString(4095, u'x') + u'\uFFFD' + QString(4096, u'y'));
}

struct Character {
    QString text;
    QByteArray shiftJis; ///< empty if it has none
    QList<QByteArray> words = {}; ///< other ways to write it
};

/// Writes random text in every way that Rich Text knows, with things in between that nobody sees.
class RandomWriter {
public:
    explicit RandomWriter(quint32 seed) : m_random(seed) { }

    [[nodiscard]] bool chance(int outOf) { return number(outOf) == 0; }
    [[nodiscard]] int number(int limit) { return int(m_random() % quint32(limit)); }

    void write(const Character &character)
    {
        if (!character.words.isEmpty() && chance(2))
            document += pick(character.words);
        else if (character.shiftJis.isEmpty() || chance(4))
            writeUnicode(character.text);
        else
            for (const char byte : character.shiftJis)
                writeByte(byte);
        writeNoise();
    }

    QByteArray document{R"({\rtf1\ansicpg932 )"};

private:
    void writeUnicode(const QString &character)
    {
        static const QByteArrayList fallbackForms =
            QByteArray("?`\\'3f`\\'95`\\\\`\\bullet `\\bin3 {}\\`\n?`\\~").split('`');
        const int fallbacks = number(4);
        document += R"({\uc)" + QByteArray::number(fallbacks);
        for (const QChar unit : character) {
            document += R"(\u)" + QByteArray::number(chance(2) ? qint16(unit.unicode()) : int(unit.unicode())) + " ";
            for (int index = chance(5) && character.size() == 1 ? 1 : 0; index < fallbacks; ++index)
                document += pick(fallbackForms);
        }
        document += "}";
    }

    void writeByte(char byte)
    {
        const bool isSyntax = byte == '\\' || byte == '{' || byte == '}';
        if (chance(2))
            document += R"(\')" + QByteArray(1, byte).toHex();
        else
            document += (isSyntax ? R"(\)" : "") + QByteArray(1, byte);
        writeNoise();
    }

    void writeNoise()
    {
        static const QByteArrayList noise = QByteArray(
            "\r\n`"
            R"(\b `\fs20 `{}`{\*\x y}`{\v h\'95}`{\pict \bin4 }\{{}`\-`\|`\:`\unheardof `\u `\bin-5 `\uc2 `)"
            R"({\unheardof}`{\footnote {\u65 ?}}`{\footer f}`{\*\atnid X}`{\xe y}{\tc z}`{\*\bkmkstart x}`\PAR `\b-2 `)"
            R"({\info{\author A}}`{\object\objemb{\*\objdata 01}}`{\pict \{ \'7b \\{\binary x}}`{\deleted\par}`)"
            R"(\bin2 {{`{\header\'95}`{\fonttbl\f7 x;}`{\field{\fldinst X}{\fldrslt}}`{\upr{x}{\*\ud}}`\header `)"
            R"(\v h\v0 `\v h\plain `\deleted x\plain `\mvf x\mvf0 `\*\unheardof `\fonttbl )")
                                                .split('`');
        while (chance(3))
            document += pick(noise);
    }

    const QByteArray &pick(const QByteArrayList &choices) { return choices[number(int(choices.size()))]; }

    std::mt19937 m_random;
};

TEST(RtfText, GivesBackWhatWasWrittenInAnyWay)
{
    const auto alphabet = std::to_array<Character>({{u"a"_s, "a"}, {u" "_s, " "}, {u"-"_s, "-"}, {u"7"_s, "7"},
        {u"'"_s, "'"}, {u"*"_s, "*"}, {u"\\"_s, R"(\)"}, {u"{"_s, "{"}, {u"}"_s, "}"},
        {u"\t"_s, "\t", {R"(\tab )", "\\\t", R"(\'09)"}},
        {u"\n"_s, "",
            {R"(\par )", "\\line\n", R"(\sect )", R"(\page )", R"(\column )", "\\\n", "\\\r", R"(\'0a)", R"(\'0D)"}},
        {u"—–•‘’“”"_s, "", {R"(\emdash\endash\bullet\lquote\rquote\ldblquote\rdblquote )"}},
        {u"\u2003\u2002\u2005\u200D\u200C\u200E\u200F\u200B\u2060"_s, "",
            {R"(\emspace\enspace\qmspace\zwj\zwnj\ltrmark\rtlmark\zwbo\zwnbo )"}},
        {u"\u2011"_s, "", {R"(\_)"}}, {u"表"_s, "\x95\x5C"}, {u"ソ"_s, "\x83\x5C"}, {u"ボ"_s, "\x83\x7B"},
        {u"マ"_s, "\x83\x7D"}, {u"あ"_s, "\x82\xA0"}, {u"ﾀ"_s, "\xC0"}, {u"é"_s, ""}, {u"\u00A0"_s, "", {R"(\~)"}},
        {u"\u2028"_s, ""}, {u"\u0301"_s, ""}, {u"\uFEFF"_s, ""}, {u"\U0001F600"_s, ""}});
    for (quint32 seed = 0; seed < 2'000; ++seed) {
        RandomWriter writer(seed);
        QString expected;
        for (int left = writer.number(60); left > 0; --left) {
            const Character &next = alphabet[std::size_t(writer.number(int(alphabet.size())))];
            writer.write(next);
            expected += next.text;
        }
        ASSERT_EQ(textOf(writer.document + "}"), expected) << "seed " << seed << '\n' << writer.document.toStdString();
    }
}

} // namespace
