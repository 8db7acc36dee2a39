#include "records/profile_file.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvane {
namespace {

using namespace std::string_literals;

struct ReadCase {
  const char* name;
  std::string file;
  std::string section;
  std::string key;
  std::optional<std::string> value;
};

const std::vector<ReadCase> kReadCases = {
    {"LetterCase", "[cURRENT]\r\nTITLE=x\r\n", "Current", "Title", "x"},
    {"BlanksAround", " \t[ \tA b\t ]\r\n \tk \t= \tv w\t \r\n", "a B", "K", "v w"},
    {"BlanksInTheQuestion", "[a]\nk=v\n", " a ", "\tk ", "v"},
    {"DoubleQuotes", "[a]\nk = \"  v \" \n", "a", "k", "  v "},
    {"SingleQuotes", "[a]\nk='v'\n", "a", "k", "v"},
    {"OnlyTheOuterPair", "[a]\nk=\"'v'\"\n", "a", "k", "'v'"},
    {"UnmatchedQuotes", "[a]\nk=\"v'\n", "a", "k", "\"v'"},
    {"LoneQuote", "[a]\nk=\"\n", "a", "k", "\""},
    {"EmptyQuotes", "[a]\nk=''\n", "a", "k", ""},
    {"FirstSectionCounts", "[a]\nj=1\n[A]\nk=2\nj=3\n", "a", "k", std::nullopt},
    {"FirstKeyCounts", "[a]\nk=1\nK=2\n", "a", "K", "1"},
    {"BeforeTheFirstSection", "k=1\n[a]\n", "", "k", std::nullopt},
    {"EmptySectionName", "k=1\n[]\nk=2\n", "", "k", "2"},
    {"Comment", "[a]\n;k=1\n  ;k=2\nk=3\n", "a", "k", "3"},
    {"CommentIsNoKey", "[a]\n;k=1\n", "a", ";k", std::nullopt},
    {"NoEqualsSign", "[a]\nk\nk 1\n", "a", "k", std::nullopt},
    {"NumberSignIsNoComment", "[a]\n#k=1\n", "a", "#k", "1"},
    {"EmptyValue", "[a]\nk=\n", "a", "k", ""},
    {"EqualsAndSemicolonInValue", "[a]\nk=a=b;c\n", "a", "k", "a=b;c"},
    {"NameEndsAtFirstBracket", "[a]b]\nk=1\n", "a", "k", "1"},
    {"NameEndsWithTheLine", "[a\r\nk=1\n", "a", "k", "1"},
    {"BracketInsideALine", "[a]\nx[b]=1\n x [c]\nk=2\n", "a", "k", "2"},
    {"SectionLineWithEquals", "[a]\n[x=1\nk=2\n", "x=1", "k", "2"},
    {"LineFeeds", "[a]\n\nj=1\nk=2\n", "a", "k", "2"},
    {"CarriageReturns", "[z]\r[a]\rj=1\rk=2\r", "a", "k", "2"},
    {"MixedLineEnds", "[z]\r\r\n\n[a]\rj=1\n\rk=2", "a", "j", "1"},
    {"UnfinishedLastLine", "[a]\r\nk=2", "a", "k", "2"},
    {"UnfinishedHeader", "[b]\n[a", "a", "k", std::nullopt},
    {"ByteOrderMark", "\xEF\xBB\xBF[a]\r\nk=1\r\n", "a", "k", "1"},
    {"Utf8", "[a]\nk=\xC3\xA9\xE2\x82\xAC\xF0\x9F\x9A\x81\n", "a", "k", "é€🚁"},
    {"Windows1252", "[a]\nk=\x80\xE9\x81\x9F\n", "a", "k", "€é\xC2\x81Ÿ"},
    {"PartlyWindows1252", "[a]\nj=\xE9\nk=\xC3\xA9\n", "a", "k", "é"},
    {"Windows1252Names", "[\xC9t\xE9]\nCl\xE9=1\n", "ÉTé", "clé", "1"},
    {"OtherLettersKeepTheirCase", "[\xC9t\xE9]\nCl\xE9=1\n", "été", "clé", std::nullopt},
    {"OverlongIsNotUtf8", "[a]\nk=\xC0\xAF\n", "a", "k", "À¯"},
    {"AtTheEdgesOfUtf8", "[a]\nk=\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xF0\x90\x80\x80\xF4\x8F\xBF\xBF\n", "a",
     "k", "\u0800\uD7FF\uE000\U00010000\U0010FFFF"},
    {"SurrogateIsNotUtf8", "[a]\nk=\xED\xA0\x80\n", "a", "k", "í\xC2\xA0€"},
    {"NulBytes", "\0[b]\n[a]\nj\0=1\nk=x\0y\n"s, "a", "k", "x\0y"s},
    {"NothingThere", "", "a", "k", std::nullopt},
};

TEST(ProfileFile, ReadsWhatStandsInAnyFileAndKeepsItsBytes) {
  for (const ReadCase& c : kReadCases) {
    const ProfileFile file(c.file);
    EXPECT_EQ(file.Read(c.section, c.key), c.value) << c.name;
    EXPECT_EQ(file.Serialize(), c.file) << c.name;
  }
}

struct WriteCase {
  const char* name;
  std::string before;
  std::string section;
  std::string key;
  std::string value;
  std::string after;
};

const std::vector<WriteCase> kWriteCases = {
    {"NewFile", "", "Current", "Race", "1", "[Current]\r\nRace=1\r\n"},
    {"FileSpellingIsKept", "[CURRENT]\nRACE=1\n", "Current", "Race", "2", "[CURRENT]\nRACE=2\n"},
    {"SpacingIsKept", " [ a ] x\n\tk  =  old \t\n", "a", "k", "new", " [ a ] x\n\tk  =  new \t\n"},
    {"SameValueChangesNothing", "[a]\nk = 'v'\n", "a", "K", "v", "[a]\nk = 'v'\n"},
    {"QuotedValueIsReplaced", "[a]\nk='old'\n", "a", "k", "new", "[a]\nk=new\n"},
    {"ValueIntoEmpty", "[a]\nk= \n", "a", "k", "v", "[a]\nk= v\n"},
    {"EmptyValue", "[a]\nk=v\n", "a", "k", "", "[a]\nk=\n"},
    {"NewKeyAfterTheLastKey", "[a]\nj=1\n;x\n\n[b]\n", "a", "k", "2", "[a]\nj=1\nk=2\n;x\n\n[b]\n"},
    {"NewKeyEndsTheLastLine", "[b]\r[a]\rj=1", "a", "k", "2", "[b]\r[a]\rj=1\rk=2\r"},
    {"NewKeyEndsTheLastHeader", "[a", "a", "k", "2", "[a\r\nk=2\r\n"},
    {"LineEndOfTheNeighbour", "[a]\r\nj=1\n\n", "a", "k", "2", "[a]\r\nj=1\nk=2\n\n"},
    {"NewSectionEndsTheLastLine", "[a]\r\nj=1", "b", "k", "2", "[a]\r\nj=1\r\n[b]\r\nk=2\r\n"},
    {"NewSectionEndsAComment", "[a]\nj=1\n;x", "b", "k", "2", "[a]\nj=1\n;x\n[b]\nk=2\n"},
    {"NewSectionAfterText", "hello", "b", "k", "2", "hello\r\n[b]\r\nk=2\r\n"},
    {"ByteOrderMarkAlone", "\xEF\xBB\xBF", "b", "k", "2", "\xEF\xBB\xBF[b]\r\nk=2\r\n"},
    {"OuterBlanksAreQuoted", "[a]\n", "a", "k", " v\t", "[a]\nk=\" v\t\"\n"},
    {"QuotesAreQuoted", "[a]\n", "a", "k", "'v'", "[a]\nk=\"'v'\"\n"},
    {"LoneQuoteIsNot", "[a]\n", "a", "k", "\"", "[a]\nk=\"\n"},
    {"LineBreaksBecomeBlanks", "[a]\n", "a", "k", "1\r\n2\n3\r4", "[a]\nk=1 2 3 4\n"},
    {"WrittenAsUtf8", "[a]\nj=\xE9\nk=\xE9\n", "a", "k", "è", "[a]\nj=\xE9\nk=è\n"},
    {"TextThatIsNotUtf8", "[a]\n", "a", "k", "\xE9", "[a]\nk=é\n"},
    {"NameNoLineCanCarry", "[a]\n", "a]b", "k", "1", "[a]\n"},
    {"KeyWithEquals", "[a]\n", "a", "k=j", "1", "[a]\n"},
    {"KeyLikeAComment", "[a]\n", "a", ";k", "1", "[a]\n"},
    {"KeyLikeASection", "[a]\n", "a", "[k", "1", "[a]\n"},
};

TEST(ProfileFile, AWriteChangesTheBytesOfItsValueOnly) {
  for (const WriteCase& c : kWriteCases) {
    ProfileFile file(c.before);
    EXPECT_EQ(file.Write(c.section, c.key, c.value), c.before != c.after) << c.name;
    EXPECT_EQ(file.Serialize(), c.after) << c.name;
  }
}

}  // namespace
}  // namespace quorvane
