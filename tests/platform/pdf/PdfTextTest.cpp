#include "platform/pdf/PopplerPdfText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace kelvo {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

/// A PDF file with one line of text a page (PDF 1.7, ISO 32000-1, sections 7.5 and 9.4). \001 is
/// the "fi" ligature of the font.
std::string pdf(const std::vector<std::string>& pages) {
    std::vector<std::string> objects = {"<< /Type /Catalog /Pages 2 0 R >>", "",
                                        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica "
                                        "/Encoding << /Differences [1 /fi] >> >>"};
    std::string kids;
    for (const std::string& text : pages) {
        const std::string content = "BT /F1 12 Tf 72 720 Td (" + text + ") Tj ET";
        objects.push_back("<< /Length " + std::to_string(content.size()) + " >>\nstream\n" +
                          content + "\nendstream");
        objects.push_back("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents " +
                          std::to_string(objects.size()) +
                          " 0 R /Resources << /Font << /F1 3 0 R >> >> >>");
        kids += std::to_string(objects.size()) + " 0 R ";
    }
    objects[1] =
        "<< /Type /Pages /Kids [" + kids + "] /Count " + std::to_string(pages.size()) + " >>";
    std::string file = "%PDF-1.7\n";
    std::string table;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        char entry[32];
        std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", file.size());
        table += entry;
        file += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::string size = std::to_string(objects.size() + 1);
    const std::string start = std::to_string(file.size());
    return file + "xref\n0 " + size + "\n0000000000 65535 f \n" + table + "trailer << /Size " +
           size + " /Root 1 0 R >>\nstartxref\n" + start + "\n%%EOF\n";
}

std::string fixture(const std::string& name) {
    std::ifstream file(KELVO_PDF_DIR "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(PdfText, ReadsThePagesInTheirOrder) {
    const std::string text = PopplerPdfText().text(pdf({"Access policy", "Second page"}));
    EXPECT_THAT(text, AllOf(HasSubstr("Access policy\n"), HasSubstr("\nSecond page")));
}

TEST(PdfText, SpellsLigaturesOut) {
    EXPECT_THAT(PopplerPdfText().text(pdf({"veri\\001ed by the of\\001cer"})),
                HasSubstr("verified by the officer"));
}

TEST(PdfText, IsEmptyForWhatHoldsNoText) {
    const std::string good = pdf({"Access policy"});
    PopplerPdfText reader;
    EXPECT_EQ(reader.text(""), "");
    EXPECT_EQ(reader.text("Access policy"), "");
    EXPECT_EQ(reader.text(std::string(100, '\0')), "");
    EXPECT_EQ(reader.text("%PDF-1.7\n%%EOF\n"), "");
    EXPECT_EQ(reader.text(pdf({""})), "");
    EXPECT_EQ(reader.text(pdf({})), "");
}

TEST(PdfText, IsEmptyForALockedDocumentAndReadsOneWithoutAPassword) {
    const std::string locked = fixture("locked.pdf");
    ASSERT_THAT(locked, HasSubstr("/Encrypt"));
    EXPECT_EQ(PopplerPdfText().text(locked), "");
    const std::string open = fixture("encrypted-without-password.pdf");
    ASSERT_THAT(open, AllOf(HasSubstr("/Encrypt"), Not(HasSubstr("Access policy"))));
    EXPECT_THAT(PopplerPdfText().text(open), HasSubstr("Access policy"));
}

TEST(PdfText, SurvivesEveryTruncationAndDamage) {
    const std::string good = pdf({"Access policy"});
    PopplerPdfText reader;
    for (std::size_t length = 0; length < good.size(); length += 7)
        (void)reader.text(good.substr(0, length));
    for (std::size_t at = 0; at < good.size(); at += 5) {
        std::string damaged = good;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x15);
        (void)reader.text(damaged);
    }
    EXPECT_THAT(reader.text(good), HasSubstr("Access policy"));
}

} // namespace
} // namespace kelvo
