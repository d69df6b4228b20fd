#include "exchange/RtfText.h"

#include "support/Cases.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

using namespace Qt::StringLiterals;

namespace {

using Rtf = Case<QByteArray, QString>;

QString textOf(const QByteArray &document)
{
    return RtfText::plainText(document).value_or(u"(not Rich Text)"_s);
}

QString textOfBody(const QByteArray &body)
{
    return textOf("{\\rtf1\\ansi " + body + "}");
}

using RtfBody = testing::TestWithParam<Rtf>;

TEST_P(RtfBody, GivesItsPlainText)
{
    EXPECT_EQ(textOfBody(GetParam().given), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Characters, RtfBody,
    testing::Values(Rtf{"line_ends_of_the_file_are_text", "a\r\nb\nc", u"abc"_s},
        Rtf{"paragraph_ends_are_lost", "a\\par b\\line c\\sect d\\page e\\column f", u"a\nb\nc\nd\ne\nf"_s},
        Rtf{"escaped_line_end_is_no_paragraph", "a\\\nb\\\r\nc\\\rd", u"a\nb\nc\nd"_s},
        Rtf{"tabs_are_lost", "a\\tab b\tc\\\td", u"a\tb\tc\td"_s},
        Rtf{"spaces_after_a_word_are_all_eaten", "a\\b  b\\b0 c", u"a bc"_s},
        Rtf{"minus_is_taken_for_a_number", "\\b-x\\fs-20 y", u"-xy"_s}, Rtf{"names_ignore_case", "a\\PAR b", u"ab"_s},
        Rtf{"long_name_is_cut_and_its_rest_is_text", "a\\" + QByteArray(300, 'x') + "1 b", u"ab"_s},
        Rtf{"symbols", "a\\~b\\_c\\-d\\|e\\:f", u"a\u00A0b\u2011cdef"_s},
        Rtf{"named_characters", "\\emdash\\endash\\bullet\\lquote\\rquote\\ldblquote\\rdblquote",
            u"\u2014\u2013\u2022\u2018\u2019\u201C\u201D"_s},
        Rtf{"named_spaces_and_marks", "\\emspace\\enspace\\qmspace\\zwj\\zwnj\\ltrmark\\rtlmark\\zwbo\\zwnbo",
            u"\u2003\u2002\u2005\u200D\u200C\u200E\u200F\u200B\u2060"_s},
        Rtf{"control_characters_get_through", QByteArray("a\0\x01\x7F", 4) + "\\'00\\'7f\\u0?\\u27?\\u133?b", u"ab"_s},
        Rtf{"line_ends_in_hexadecimal_are_lost", "a\\'0db", u"a\nb"_s},
        Rtf{"upper_case_digits_are_refused", "\\'E9\\'eA", u"éê"_s},
        Rtf{"bad_digits_eat_the_text", "a\\'x1b", u"a\uFFFDx1b"_s}),
    rowName);

INSTANTIATE_TEST_SUITE_P(Unicode, RtfBody,
    testing::Values(Rtf{"odd_numbers_of_fallbacks", "\\uc-5\\u65 ?\\uc\\u66 ?\\uc99\\u67 ????", u"A?BC"_s},
        Rtf{"number_of_fallbacks_outlives_its_group", "{\\uc0\\u65 x}\\u66?y", u"AxBy"_s},
        Rtf{"fallback_is_sought_beyond_the_group", "\\uc3{\\u65 ?}abc\\u66 {def}", u"AabcBdef"_s},
        Rtf{"paragraph_end_is_taken_for_a_fallback", "\\u65\\par b\\u66\\\nc", u"A\nbB\nc"_s},
        Rtf{"next_character_is_taken_for_a_fallback", "\\u65\\u66 ?c", u"ABc"_s},
        Rtf{"word_without_number_is_a_character", "a\\u b", u"ab"_s},
        Rtf{"whole_code_point_is_cut_to_16_bits", "\\u128512?", u"\U0001F600"_s},
        Rtf{"lone_surrogates_get_through", "\\u-10179?a\\u-8704?\\u-8704?", u"\uFFFDa\uFFFD\uFFFD"_s},
        Rtf{"high_surrogate_waits_for_too_long", "\\u55357?\\u55357?\\u56832?\\u56832?", u"\uFFFD\U0001F600\uFFFD"_s},
        Rtf{"number_overflows", "\\u4294967361?a\\u-99999999999999999999?", u"\uFFFDa\uFFFD"_s},
        Rtf{"both_alternatives_are_read", "{\\upr{a\\'3f}{\\*\\ud{a\\u945 ?}}}b", u"aαb"_s}),
    rowName);

INSTANTIATE_TEST_SUITE_P(LeftOut, RtfBody,
    testing::Values(Rtf{"unknown_word_hides_its_group", "a{\\unheardof b}c", u"abc"_s},
        Rtf{"object_data", "a{\\object\\objemb{\\*\\objdata 0105}{\\result x}}b", u"ab"_s},
        Rtf{"headers_and_footers", "{\\header h}{\\headerl h}{\\headerr h}{\\headerf h}{\\footer f}{\\footerf f}a",
            u"a"_s},
        Rtf{"notes_and_comments", "a{\\footnote n}{\\*\\atnid X}{\\*\\annotation c}{\\footnote\\ftnalt e}b", u"ab"_s},
        Rtf{"bookmarks_and_index_entries", "a{\\*\\bkmkstart x}b{\\*\\bkmkend x}{\\xe y}{\\tc z}c", u"abc"_s},
        Rtf{"field_code_is_read", "{\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt a}}{\\field{\\fldinst PAGE}}",
            u"a"_s},
        Rtf{"list_number_is_lost", "{\\pntext\\f0 1.\\tab}{\\*\\pn\\pnlvlbody{\\pntxta .}}a", u"1.\ta"_s},
        Rtf{"text_box_is_lost_or_doubled",
            "a{\\shp{\\*\\shpinst\\shpleft0{\\sp{\\sn x}{\\sv 1}}{\\shptxt b\\par}}{\\shprslt{\\*\\do{\\dptxbxtext "
            "b}}}}c",
            u"a\nb\nc"_s},
        Rtf{"text_box_begins_with_an_empty_line", "{\\shptxt a\\par}{\\shptxt b}", u"a\nb"_s},
        Rtf{"formula_is_lost_or_doubled",
            "{\\mmath{\\*\\moMath{\\mr x}{\\md{\\mdPr{\\mbegChr (}}{\\me{\\mr y}}}}{\\mmathPict{\\pict 00}}}", u"xy"_s},
        Rtf{"hidden_text", "a{\\v b\\par}c\\v d\\v0 e\\v f\\plain g", u"aceg"_s},
        Rtf{"deleted_text", "a{\\deleted\\revauthdel1 b\\u65?}c{\\revised d}{\\mvf e\\mvf0 f}{\\deleted g\\plain h}",
            u"acdfh"_s},
        Rtf{"braces_in_a_left_out_group", "a{\\pict \\{ \\'7b \\\\{\\binary x}}b", u"ab"_s},
        Rtf{"stray_destination_takes_the_rest", "a\\header b\\*\\unheardof c\\fonttbl d", u"abcd"_s},
        Rtf{"text_behind_the_document", "a}b{c}", u"a"_s}),
    rowName);

INSTANTIATE_TEST_SUITE_P(ListLabels, RtfBody,
    testing::Values(Rtf{"empty_label_indents_the_heading", "a\\par{\\listtext\\pard\\plain \\tab}b", u"a\nb"_s},
        Rtf{"empty_label_of_old_writers_indents", "{\\pntext\\f0\\'20\\tab}b", u"b"_s},
        Rtf{"number_goes_with_its_blanks", "{\\listtext\\tab 1.\\tab}b", u"\t1.\tb"_s},
        Rtf{"inner_group_is_taken_for_the_label", "{\\listtext{\\b\\tab}1.{\\b\\tab}}b", u"\t1.\tb"_s},
        Rtf{"blanks_before_go_with_the_label", "a \\'20{\\listtext\\tab}\\tab b", u"a  \tb"_s},
        Rtf{"half_of_a_pair_before_is_lost", "\\u-10179?{\\listtext\\tab}\\u-8704?", u"\U0001F600"_s},
        Rtf{"dropped_cell_is_taken_for_the_last_of_a_row", "{\\listtext\\cell}b\\row c", u"b\nc"_s},
        Rtf{"label_in_no_group_takes_all_blanks", " \\listtext b\\tab", u" b\t"_s}),
    rowName);

INSTANTIATE_TEST_SUITE_P(Tables, RtfBody,
    testing::Values(
        Rtf{"row_ends_in_a_tab", "\\trowd a\\cell b\\cell\\row c\\cell d\\cell{\\row}e", u"a\tb\nc\td\ne"_s},
        Rtf{"empty_cells_shift_the_columns", "\\cell b\\cell\\cell\\row", u"\tb\t\n"_s},
        Rtf{"second_row_end_is_lost", "a\\cell\\row\\row b", u"a\n\nb"_s},
        Rtf{"bytes_come_after_their_cell", "\\ansicpg932 a\\cell\\'95\\'5c\\row b", u"a\t表\nb"_s},
        Rtf{"tab_of_the_text_is_taken_for_a_cell", "a\\cell b\\tab\\row", u"a\tb\t\n"_s},
        Rtf{"nested_row_is_lost_or_doubled",
            "a\\nestcell b\\nestcell{\\*\\nesttableprops\\trowd\\nestrow}{\\nonesttables\\par}c\\cell d\\cell\\row",
            u"a\tb\nc\td\n"_s}),
    rowName);

QByteArray withFonts(const QByteArray &body)
{
    return "\\ansicpg1251\\deff1{\\fonttbl{\\f0\\fcharset0 Arial;}{\\f1\\fcharset204{\\*\\falt x}Arial Cyr;}"
           "{\\f2\\fcharset128 Mincho;}{\\f3\\fcharset2 Symbol;}{\\f4\\fcharset2 Wingdings 2;}{\\f5\\fcharset1 Any;}"
           "{\\f6\\fcharset0\\cpg1253 Greek;}{\\f7\\fcharset2 Doulos;}\\f8\\fcharset238 Loose;\\f31506\\fcharset177 H;}"
        + body;
}

INSTANTIATE_TEST_SUITE_P(Fonts, RtfBody,
    testing::Values(Rtf{"default_font_is_ignored", withFonts("\\'e6"), u"ж"_s},
        Rtf{"character_set_is_ignored", withFonts("\\f0\\'e6\\f8\\'e6\\f31506\\'e0"), u"æćא"_s},
        Rtf{"font_outlives_its_group", withFonts("{\\f0\\'e6}\\'e6\\f0\\plain\\'e6"), u"æжж"_s},
        Rtf{"code_page_of_the_font_is_ignored", withFonts("\\f6\\'e6"), u"ζ"_s},
        Case{
            "default_character_set_is_western", withFonts("\\f5\\'e6\\f99\\'e6\\f-7\\'e6\\f999999999\\'e6"), u"жжжж"_s},
        Rtf{"pair_is_joined_across_fonts", withFonts("\\f2\\'95\\f0\\'5c"), u"\uFFFD\\"_s},
        Rtf{"first_half_swallows_a_paragraph_end", withFonts("\\f2\\'95\\par\\'95\\u65?\\'95"),
            u"\uFFFD\n\uFFFDA\uFFFD"_s},
        Rtf{"greek_of_the_symbol_font_is_latin", withFonts("\\f3 ab\\'b7\\u-3913?"), u"αβ••"_s},
        Rtf{"bullets_of_dingbats_are_letters",
            withFonts("\\f4\\'4a\\'4c\\'6c\\'6e\\'6f\\'71\\'72\\'75\\'76\\'9f\\'a0\\'a7\\'a8\\'d8\\'df\\'e0\\'e1\\'"
                      "e2\\'e8\\'f0\\'fb\\'fc\\'fd\\'fe\\u-3932?z"),
            u"☺☹●■□❑❒◆❖•\u00A0▪◻➢←→↑↓➔⇨✘✔☒☑\uFFFD\uFFFD"_s},
        Rtf{"lettered_symbol_font_is_greek", withFonts("\\f7 ab\\'e6"), u"abж"_s},
        Rtf{"symbols_outlive_their_font", withFonts("{\\fonttbl\\f8\\fcharset2 Any;\\f9 Symbol;}\\f9 a"), u"a"_s},
        Rtf{"unknown_code_page_is_taken", withFonts("{\\fonttbl\\f9\\fcharset238\\cpg9999 x;}\\f9\\'e6"), u"ć"_s},
        Rtf{"hostile_font_numbers", "{\\fonttbl\\f2147483647\\fcharset204;\\f-5\\fcharset204;}\\f2147483647\\'e6",
            u"æ"_s}),
    rowName);

INSTANTIATE_TEST_SUITE_P(CodePages, RtfBody,
    testing::Values(Rtf{"without_any", "\\'80\\'e9\\'81", u"€é\uFFFD"_s}, Rtf{"mac", "\\mac\\'8e", u"é"_s},
        Rtf{"pc", "\\pc\\'82", u"é"_s}, Rtf{"pca", "\\pca\\'d5", u"ı"_s},
        Rtf{"unknown_is_western", "\\ansicpg4711\\'e9\\ansicpg-1\\'e9\\ansicpg0\\'e9\\ansicpg1200\\'e9", u"éééé"_s},
        Rtf{"named_after_ibm", "\\ansicpg437\\'e1\\ansicpg866\\'a6\\ansicpg819\\'e9", u"ßжé"_s},
        Rtf{"named_after_windows", "\\ansicpg874\\'a1\\ansicpg1250\\'b3\\ansicpg10029\\'88\\ansicpg20866\\'c1",
            u"กłąа"_s},
        Rtf{"named_otherwise",
            "\\ansicpg10001\\'8e\\'a9\\ansicpg10002\\'a4\\'a4\\ansicpg10003\\'c7\\'d1"
            "\\ansicpg10008\\'d6\\'d0\\ansicpg28591\\'e9\\ansicpg51932\\'a4\\'a2",
            u"自中한中éあ"_s},
        Rtf{"bytes_without_character",
            "\\ansicpg932\\'8e\\'a9\\'c0\\'a0\\ansicpg936\\'80\\'ff\\ansicpg1252\\'a0\\ansicpg949\\'80",
            u"自ﾀ\uFFFD€\uFFFD\u00A0\uFFFD"_s},
        Rtf{"utf8", "\\ansicpg65001\\'e4\\'b8\xAD\xF0\x9F\x98\x80\\'e4\\'b8x\\'c0", u"中\U0001F600\uFFFDx\uFFFD"_s}),
    rowName);

TEST(RtfText, KnowsTheCodePagesOfWindowsAndTheMacintosh)
{
    QString found;
    for (const int page :
        {437, 720, 737, 775, 819, 850, 852, 855, 857, 858, 860, 861, 862, 863, 864, 865, 866, 869, 874, 932, 936, 949,
            950, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, 10000, 10001, 10002, 10003, 10006, 10007, 10008,
            10029, 10081, 20866, 21866, 28591, 28592, 28595, 28597, 28599, 28605, 51932, 51949, 54936, 65001})
        found += textOfBody("\\ansicpg" + QByteArray::number(page) + "\\'e6\\'d0\\'a1\\'a4") + u' ';
    EXPECT_EQ(found,
        QString::fromUtf16(u"μ╨íñ µ╨\u0629\u062C ό╨κν µąĪż æÐ¡¤ µðíñ ŠđíĄ ТлАц µºíñ µðíñ μ╨íñ μ╨íÁ μ╨íñ μ╨´¨ "
                           u"ﻧﺫ\u00AD¤ μ╨íñ ц╨бд μΤΐΑ ๆะกค 賻｡､ 嫘· 淵· 禛﹞ ćĐˇ¤ жРЎ¤ æÐ¡¤ ζΠ΅¤ æĞ¡¤ \u05D6\u05C0¡₪ "
                           u"\u0648\u0630\u060C¤ ęŠ\uFFFD¤ æĐ¡¤ Ê–°§ 賻｡､ 禛﹞ 淵· φ–ΓΛ ж–°§ 嫘· ś–°§ Ê–°§ Фп║╓ Фп║є "
                           u"æÐ¡¤ ćĐĄ¤ цаЁЄ ζΠ‘€ æĞ¡¤ æÐ¡€ 耒， 淵· 嫘· \uFFFDС\uFFFD "));
}

TEST(RtfText, KnowsTheCodePagesOfCharacterSets)
{
    const QByteArray bytes = "\\'e6\\'d0\\'a1\\'a4";
    const QList<std::pair<int, int>> pages{{0, 1252}, {1, 775}, {3, 775}, {77, 10000}, {78, 10001}, {79, 10003},
        {80, 10008}, {81, 10002}, {85, 10006}, {86, 10081}, {88, 10029}, {89, 10007}, {128, 932}, {129, 949},
        {134, 936}, {136, 950}, {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {179, 1256},
        {180, 1256}, {181, 1255}, {186, 1257}, {204, 1251}, {222, 874}, {238, 1250}, {254, 437}, {255, 850}};
    for (const auto &[charset, page] : pages)
        EXPECT_EQ(textOfBody("\\ansicpg775{\\fonttbl\\f1\\fcharset" + QByteArray::number(charset) + " x;}\\f1" + bytes),
            textOfBody("\\ansicpg" + QByteArray::number(page) + bytes))
            << charset;
}

using RtfDocument = testing::TestWithParam<Rtf>;

TEST_P(RtfDocument, GivesItsPlainText)
{
    EXPECT_EQ(textOf(GetParam().given), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(OfWriters, RtfDocument,
    testing::Values(
        Rtf{"word",
            "{\\rtf1\\adeflang1025\\ansi\\ansicpg1252\\uc1\\adeff31507\\deff0\\stshfdbch31505\\stshfloch31506\n"
            "{\\fonttbl{\\f0\\fbidi \\froman\\fcharset0\\fprq2{\\*\\panose 02020603050405020304}Times New Roman;}\n"
            "{\\f3\\fbidi \\froman\\fcharset2\\fprq2{\\*\\panose 05050102010706020507}Symbol;}\n"
            "{\\f13\\fbidi \\fnil\\fcharset134\\fprq2{\\*\\panose 02010600030101010101}SimSun{\\*\\falt "
            "\\'cb\\'ce};}}\n"
            "{\\colortbl;\\red0\\green0\\blue0;}{\\*\\defchp \\f31506\\fs22 }{\\stylesheet{\\ql \\fs22 \\snext0 "
            "Normal;}}\n"
            "{\\*\\rsidtbl \\rsid1}{\\mmathPr\\mmathFont34}{\\info{\\author A}{\\nofpages1}}{\\*\\xmlnstbl {\\xmlns1 "
            "h}}\n"
            "\\paperw12240\\sectd {\\*\\pnseclvl1\\pnucrm{\\pntxta .}}\\pard\\plain \\ltrpar\\ql \\rtlch\\fcs1 "
            "\\af31507 "
            "\\ltrch\\fcs0 \\fs22 {\\listtext\\pard\\plain\\ltrpar \\rtlch\\fcs1 \\af0 \\ltrch\\fcs0 \\f3\\insrsid1 "
            "\\loch\\af3\\dbch\\af31505\\hich\\f3 \\'b7\\tab}{\\rtlch\\fcs1 \\af31507 \\ltrch\\fcs0 \\insrsid1 "
            "\\hich\\af31506\\dbch\\af31505\\loch\\f31506 It}{\\rtlch\\fcs1 \\ltrch\\fcs0 \\insrsid1 "
            "\\hich\\af31506\\dbch\\af31505\\loch\\f31506 \\rquote s }{\\loch\\af0\\hich\\af0\\dbch\\f13 \\'d6\\'d0\n"
            "\\'ce\\'c4\\par }\\pard \\ltrpar{\\rtlch\\fcs1 \\af0 \\ltrch\\fcs0 caf\\'e9\\par }{\\*\\themedata 504b}\n"
            "{\\*\\datastore 0105}}",
            u"•\tIt’s 中文\ncafé\n"_s},
        Rtf{"textedit",
            "{\\rtf1\\ansi\\ansicpg1252\\cocoartf2639\n\\cocoatextscaling0\\cocoaplatform0{"
            "\\fonttbl\\f0\\fswiss\\fcharset0 "
            "Helvetica;\\f1\\fnil\\fcharset128 HiraKakuProN-W3;}\n{\\colortbl;\\red255\\green255\\blue255;}\n"
            "{\\*\\expandedcolortbl;;}\n\\pard\\tx560\\pardirnatural\\partightenfactor0\n\n\\f0\\fs24 \\cf0 "
            "Don\\'92t\\\n"
            "\\uc0\\u55357 \\u56832 \\f1 \\'93\\'fa\\'96\\'7b\n\\f0 \\\n\\pard\\li720\n\\ls1\\ilvl0\\cf0 "
            "{\\listtext\t\\'95\t}"
            "one\\uc0\\u8232 two}",
            u"Don’t\n\U0001F600日本\n\t•\tone\u2028two"_s}),
    rowName);

INSTANTIATE_TEST_SUITE_P(Beginnings, RtfDocument,
    testing::Values(Rtf{"blanks_before_are_refused", " \r\n\t{\\rtf1 a}", u"a"_s},
        Rtf{"byte_order_mark_is_refused", "\xEF\xBB\xBF\n{\\rtf1 a}", u"a"_s},
        Rtf{"empty_document_is_refused", "{\\rtf}", u""_s}, Rtf{"nothing_is_taken", "", u"(not Rich Text)"_s},
        Rtf{"plain_text_is_taken", "a {\\rtf1 b}", u"(not Rich Text)"_s}),
    rowName);

INSTANTIATE_TEST_SUITE_P(CutOff, RtfDocument,
    testing::Values(Rtf{"in_a_group", "{\\rtf1 a{b{\\v c", u"ab"_s}, Rtf{"after_a_backslash", "{\\rtf1 a\\", u"a"_s},
        Rtf{"in_a_pair_of_bytes", "{\\rtf1\\ansicpg932 a\\'95", u"a\uFFFD"_s},
        Rtf{"in_a_fallback", "{\\rtf1\\uc9 a\\u65 ?", u"aA"_s}, Rtf{"in_a_row", "{\\rtf1 a\\cell b\\cell", u"a\tb\t"_s},
        Rtf{"in_binary_data", "{\\rtf1 a\\bin2147483647 xyz", u"a"_s},
        Rtf{"in_a_left_out_group", "{\\rtf1 a{\\pict{\\bin99999999999 }}b}", u"a"_s},
        Rtf{"negative_binary_data", "{\\rtf1 a\\bin-5 b}", u"ab"_s}),
    rowName);

TEST(RtfText, ReadsGroupsOfAnyDepth)
{
    constexpr qsizetype depth = 300'000;
    const QByteArray opening = QByteArray("{\\f1\\v0 ").repeated(depth);
    EXPECT_EQ(textOfBody("a" + opening + "b" + QByteArray(depth, '}') + "c"), u"abc"_s);
    EXPECT_EQ(textOfBody("a{\\pict" + opening + "b" + QByteArray(depth, '}') + "}c"), u"ac"_s);
    EXPECT_EQ(textOfBody(opening + "b"), u"b"_s);
    // Each of these labels would be looked through from the first blank on.
    constexpr qsizetype labels = 60'000;
    EXPECT_EQ(textOfBody("a" + QByteArray("{\\listtext").repeated(labels) + QByteArray(400'000, ' ') + "b"
                  + QByteArray(labels, '}')),
        u'a' + QString(400'000 - 1, u' ') + u'b');
}

TEST(RtfText, ReadsPairsOfBytesAcrossItsOwnBuffers)
{
    for (const qsizetype shift : {0, 1}) {
        const QByteArray pairs = QByteArray("\\'95\\'5c\x92\x86").repeated(10'000);
        EXPECT_EQ(textOfBody("\\ansicpg932 " + QByteArray(shift, 'x') + pairs),
            QString(shift, u'x') + u"表中"_s.repeated(10'000));
    }
    const QByteArray cutCharacter = QByteArray(4095, 'x') + "\xE4" + QByteArray(4096, 'y');
    EXPECT_EQ(textOfBody("\\ansicpg65001 " + cutCharacter), QString(4095, u'x') + u'\uFFFD' + QString(4096, u'y'));
}

/// Writes random text in every way that Rich Text knows, with things in between that nobody sees.
class RandomWriter {
public:
    explicit RandomWriter(quint32 seed) : m_random(seed) { }

    [[nodiscard]] bool chance(int outOf) { return number(outOf) == 0; }
    [[nodiscard]] int number(int limit) { return int(m_random() % quint32(limit)); }

    void write(const QString &character, const QByteArray &shiftJis)
    {
        if (shiftJis.isEmpty() || chance(4))
            writeUnicode(character);
        else
            for (const char byte : shiftJis)
                writeByte(byte);
    }

    QByteArray document{"{\\rtf1\\ansicpg932 "};

private:
    void writeUnicode(const QString &character)
    {
        const int fallbacks = number(4);
        document += "{\\uc" + QByteArray::number(fallbacks);
        for (const QChar unit : character) {
            document += "\\u" + QByteArray::number(chance(2) ? qint16(unit.unicode()) : int(unit.unicode())) + " ";
            for (int index = chance(5) && character.size() == 1 ? 1 : 0; index < fallbacks; ++index)
                document += pick({"?", "\\'3f", "\\'95", "\\\\", "\\bullet ", "\\bin3 {}\\", "\n?", "\\~"});
        }
        document += "}";
        writeNoise();
    }

    void writeByte(char byte)
    {
        const bool isSyntax = byte == '\\' || byte == '{' || byte == '}';
        if (chance(2))
            document += "\\'" + QByteArray(1, byte).toHex();
        else
            document += (isSyntax ? "\\" : "") + QByteArray(1, byte);
        writeNoise();
    }

    void writeNoise()
    {
        while (chance(3))
            document += pick({"\r\n", "\\b ", "\\fs20 ", "{}", R"({\*\x y})", "{\\v h\\'95}", R"({\pict \bin4 }\{{})",
                "\\-", "{\\footnote {\\u65 ?}}", "\\uc2 ", "{\\deleted\\par}", "\\bin2 {{", R"({\header\'95})",
                "{\\fonttbl\\f7 x;}"});
    }

    const char *pick(std::initializer_list<const char *> choices)
    {
        return choices.begin()[number(int(choices.size()))];
    }

    std::mt19937 m_random;
};

TEST(RtfText, GivesBackWhatWasWrittenInAnyWay)
{
    struct Character {
        QString text;
        QByteArray shiftJis;
    };
    const auto alphabet = std::to_array<Character>(
        {{u"a"_s, "a"}, {u" "_s, " "}, {u"-"_s, "-"}, {u"7"_s, "7"}, {u"'"_s, "'"}, {u"*"_s, "*"}, {u"\\"_s, "\\"},
            {u"{"_s, "{"}, {u"}"_s, "}"}, {u"\t"_s, "\t"}, {u"表"_s, "\x95\x5C"}, {u"ソ"_s, "\x83\x5C"},
            {u"ボ"_s, "\x83\x7B"}, {u"マ"_s, "\x83\x7D"}, {u"あ"_s, "\x82\xA0"}, {u"ﾀ"_s, "\xC0"}, {u"é"_s, ""},
            {u"\u00A0"_s, ""}, {u"\u2028"_s, ""}, {u"\u0301"_s, ""}, {u"\uFEFF"_s, ""}, {u"\U0001F600"_s, ""}});
    for (quint32 seed = 0; seed < 2'000; ++seed) {
        RandomWriter writer(seed);
        QString expected;
        for (int left = writer.number(60); left > 0; --left) {
            const Character &next = alphabet[std::size_t(writer.number(int(alphabet.size())))];
            writer.write(next.text, next.shiftJis);
            expected += next.text;
        }
        ASSERT_EQ(textOf(writer.document + "}"), expected) << "seed " << seed << '\n' << writer.document.toStdString();
    }
}

} // namespace
