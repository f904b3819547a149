#include "MailEncoding.h"
#include "MessageText.h"
#include "TextSink.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

std::string textOf(std::string_view mail) {
    TextSink sink(100'000);
    MessageText::add(mail, sink);
    return sink.take();
}

TEST(MailEncoding, QuotedPrintableIsBytesAndJoinsLines) {
    struct Row {
        const char* written;
        const char* bytes;
    };
    const Row rows[] = {{"caf=C3=A9", "caf\u00E9"},
                        {"in=\r\nvoice", "invoice"},
                        {"in= \t\nvoice", "invoice"},
                        {"a=3db", "a=b"},
                        {"a=zz=4", "a=zz=4"},
                        {"=", "="},
                        {"", ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(MailEncoding::quotedPrintable(row.written), row.bytes) << row.written;
    }
}

TEST(MailEncoding, AHeaderIsDecodedWordByWord) {
    struct Row {
        const char* written;
        const char* text;
    };
    const Row rows[] = {{"plain text", "plain text"},
                        {"=?utf-8?Q?caf=C3=A9_noir?= rest", "caf\u00E9 noir rest"},
                        {"=?UTF-8?B?Y2Fmw6k=?=", "caf\u00E9"},
                        {"=?iso-8859-1?q?caf=E9?=\r\n =?utf-8?q?teria?=", "caf\u00E9teria"},
                        {"a =?utf-8*fr?q?b?= c", "a b c"},
                        {"=?nosuch?q?b?=", "=?nosuch?q?b?="},
                        {"=?utf-8?x?b?= =?utf-8?q?open", "=?utf-8?x?b?= =?utf-8?q?open"},
                        {"a =?b", "a =?b"}};
    for (const auto& row : rows) {
        EXPECT_EQ(MailEncoding::header(row.written), row.text) << row.written;
    }
}

TEST(MessageText, HoldsTheSubjectThePeopleAndTheBody) {
    EXPECT_EQ(textOf("Received: by no one\r\nFrom: Ren=?utf-8?q?=C3=A9e?= <renee@example.org>\r\nTo: Alex\r\n"
                     "Subject: Invoice of\r\n May\r\nX-Other: no\r\n\r\nDear Alex,\r\nthank you."),
              "Ren\u00E9e <renee@example.org> Alex Invoice of May Dear Alex, thank you.");
}

TEST(MessageText, IsDecodedAsItsHeadersSay) {
    EXPECT_EQ(textOf("Content-Type: text/plain; charset=\"koi8-r\"\n\n\xD0\xC9\xD7\xCF"),
              "\u043F\u0438\u0432\u043E");
    EXPECT_EQ(textOf("content-type: TEXT/PLAIN; format=flowed;\n\tcharset=iso-8859-2\n"
                     "Content-Transfer-Encoding: Quoted-Printable\n\n=F8in=\nvoice"),
              "\u0159invoice");
    EXPECT_EQ(textOf("Content-Transfer-Encoding: base64\n\naW52\nb2ljZQ==\n"), "invoice");
    EXPECT_EQ(textOf("Content-Type: text/plain; charset=us-ascii\n\ncaf\u00E9"), "caf\u00E9");
    EXPECT_EQ(textOf("\nonly a body"), "only a body");
}

TEST(MessageText, HasAllPartsThatAreText) {
    const std::string mail =
        "Content-Type: multipart/mixed; boundary=\"out;er\"\r\n\r\npreamble\r\n--out;er\r\n"
        "Content-Type: multipart/alternative; boundary=inner\r\n\r\n--inner\r\n\r\nplain\r\n"
        "--inner\r\nContent-Type: text/html\r\n\r\n<p>rich<script>no</script>\r\n--inner--\r\n"
        "epilogue\r\n--out;er\r\nContent-Type: application/pdf\r\n\r\nattached\r\n--out;er\r\n"
        "Content-Type: message/rfc822\r\n\r\nSubject: forwarded\r\n\r\ninside\r\n--out;er--\r\n";
    EXPECT_EQ(textOf(mail), "plain rich forwarded inside");
}

TEST(MessageText, OfAMailThatIsCutIsWhatIsThere) {
    EXPECT_EQ(textOf("Content-Type: multipart/mixed; boundary=b\n\n--b\n\nfirst\n--b\n\nsecond"),
              "first second");
    EXPECT_EQ(textOf("Subject: cut"), "cut");
    EXPECT_EQ(textOf("Content-Type: multipart/mixed\n\nno boundary"), "");
    EXPECT_EQ(textOf(""), "");
}

TEST(MessageText, EndsWherePartsLieTooDeep) {
    const auto nested = [](int levels) {
        std::string mail;
        for (int i = 0; i < levels; ++i) {
            mail += "Content-Type: message/rfc822\n\n";
        }
        return mail + "\nwords";
    };
    EXPECT_EQ(textOf(nested(MessageText::kDeepest)), "words");
    EXPECT_EQ(textOf(nested(MessageText::kDeepest + 1)), "");
    EXPECT_EQ(textOf(nested(10'000)), "");
}

TEST(MessageText, OfAMailThatIsCountedEndsWithItsBytes) {
    EXPECT_EQ(textOf("17       \nSubject: a\n\nwords<plist>no</plist>"), "a words");
    EXPECT_EQ(textOf("18 words\n\nbody"), "body") << "no count";
}

} // namespace
} // namespace quillane
