#include "records/profile_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace quorvane {
namespace {

using testing::Eq;
using testing::Optional;
using namespace std::string_literals;

struct ReadCase {
  const char* name;
  std::string file;
  std::string section;
  std::string key;
  std::optional<std::string> value;
};

class ProfileRead : public testing::TestWithParam<ReadCase> {};

TEST_P(ProfileRead, GivesTheValue) {
  const ReadCase& c = GetParam();
  EXPECT_THAT(ProfileFile(c.file).Read(c.section, c.key), Eq(c.value));
  EXPECT_EQ(ProfileFile(c.file).Serialize(), c.file);
}

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
    {"NumberSignInValue", "[a]\nk=1 # x\n", "a", "k", "1 # x"},
    {"EmptyValue", "[a]\nk=\n", "a", "k", ""},
    {"BlankValue", "[a]\nk= \t \n", "a", "k", ""},
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
    {"Windows1252", "[a]\nk=\x80\xE9\x81\n", "a", "k", "€é\xC2\x81"},
    {"PartlyWindows1252", "[a]\nj=\xE9\nk=\xC3\xA9\n", "a", "k", "é"},
    {"Windows1252Names", "[\xC9t\xE9]\nCl\xE9=1\n", "ÉTé", "clé", "1"},
    {"OtherLettersKeepTheirCase", "[\xC9t\xE9]\nCl\xE9=1\n", "été", "clé", std::nullopt},
    {"OverlongIsNotUtf8", "[a]\nk=\xC0\xAF\n", "a", "k", "À¯"},
    {"SurrogateIsNotUtf8", "[a]\nk=\xED\xA0\x80\n", "a", "k", "í\xC2\xA0€"},
    {"NulBytes", "\0[b]\n[a]\nj\0=1\nk=x\0y\n"s, "a", "k", "x\0y"s},
    {"NothingThere", "", "a", "k", std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Cases, ProfileRead, testing::ValuesIn(kReadCases),
                         [](const auto& test) { return test.param.name; });

struct WriteCase {
  const char* name;
  std::string before;
  std::string section;
  std::string key;
  std::string value;
  std::string after;
};

class ProfileWrite : public testing::TestWithParam<WriteCase> {};

TEST_P(ProfileWrite, ChangesTheseBytesOnly) {
  const WriteCase& c = GetParam();
  ProfileFile file(c.before);
  EXPECT_EQ(file.Write(c.section, c.key, c.value), c.before != c.after);
  EXPECT_EQ(file.Serialize(), c.after);
}

const std::vector<WriteCase> kWriteCases = {
    {"NewFile", "", "Current", "Race", "1", "[Current]\r\nRace=1\r\n"},
    {"FileSpellingIsKept", "[CURRENT]\nRACE=1\n", "Current", "Race", "2", "[CURRENT]\nRACE=2\n"},
    {"SpacingIsKept", " [ a ] x\n\tk  =  old \t\n", "a", "k", "new", " [ a ] x\n\tk  =  new \t\n"},
    {"SameValueChangesNothing", "[a]\nk = 'v'\n", "a", "K", "v", "[a]\nk = 'v'\n"},
    {"QuotedValueIsReplaced", "[a]\nk='old'\n", "a", "k", "new", "[a]\nk=new\n"},
    {"ValueIntoEmpty", "[a]\nk= \n", "a", "k", "v", "[a]\nk= v\n"},
    {"EmptyValue", "[a]\nk=v\n", "a", "k", "", "[a]\nk=\n"},
    {"FirstSectionIsWritten", "[a]\nk=1\n[A]\nk=2\n", "A", "k", "3", "[a]\nk=3\n[A]\nk=2\n"},
    {"FirstKeyIsWritten", "[a]\nk=1\nK=2\n", "a", "K", "3", "[a]\nk=3\nK=2\n"},
    {"NewKeyAfterTheLastKey", "[a]\nj=1\n;x\n\n[b]\n", "a", "k", "2", "[a]\nj=1\nk=2\n;x\n\n[b]\n"},
    {"NewKeyInEmptySection", "[a]\n; x\n[b]\n", "a", "k", "2", "[a]\nk=2\n; x\n[b]\n"},
    {"NewKeyEndsTheLastLine", "[b]\r[a]\rj=1", "a", "k", "2", "[b]\r[a]\rj=1\rk=2\r"},
    {"NewKeyEndsTheLastHeader", "[a", "a", "k", "2", "[a\r\nk=2\r\n"},
    {"LineEndOfTheNeighbour", "[a]\r\nj=1\n\n", "a", "k", "2", "[a]\r\nj=1\nk=2\n\n"},
    {"NewSectionAtTheEnd", "[a]\nj=1\n\n", "b", "k", "2", "[a]\nj=1\n\n[b]\nk=2\n"},
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

INSTANTIATE_TEST_SUITE_P(Cases, ProfileWrite, testing::ValuesIn(kWriteCases),
                         [](const auto& test) { return test.param.name; });

TEST(ProfileFile, KeepsAHandWrittenFileThroughASave) {
  const std::string before =
      "\xEF\xBB\xBF; Club contest, typed by hand\r\n"
      "stray=1\r\n\r\n"
      "[Current]\r\n  Title =  Spring Fling  ; not a comment\r\n#old=1\nFoo\r\n\r\n"
      "[Mine]\r\nCaf\xE9=\x80 5\r\n\t[ race1 ]\ttail\rComments= 'x' \r"
      "[current]\nRace=99\n"
      "[Race1]\nComments=never read";
  const std::string after =
      "\xEF\xBB\xBF; Club contest, typed by hand\r\n"
      "stray=1\r\n\r\n"
      "[Current]\r\n  Title =  Spring Fling  ; not a comment\r\n#old=1\nRace=2\nFoo\r\n\r\n"
      "[Mine]\r\nCaf\xE9=\x80 5\r\n\t[ race1 ]\ttail\rComments= windy \rTimestamp=46347.375\r"
      "[current]\nRace=99\n"
      "[Race1]\nComments=never read\r\n"
      "[Race1_Lane1]\r\nNumEvents=0\r\nNumCuts=0\r\n";
  ProfileFile file(before);
  file.Write("Current", "Race", "2");
  file.Write("Race1", "Comments", "windy");
  file.Write("Race1", "Timestamp", "46347.375");
  file.Write("Race1_Lane1", "NumEvents", "0");
  file.Write("Race1_Lane1", "NumCuts", "0");
  file.Write("Current", "Title", "Spring Fling  ; not a comment");
  EXPECT_EQ(file.Serialize(), after);
}

TEST(FirstCharacters, CutsBetweenCharacters) {
  EXPECT_EQ(FirstCharacters("aé€🚁b", 4), "aé€🚁");
  EXPECT_EQ(FirstCharacters("aé", 9), "aé");
}

// The same file kept the simplest way: a list of lines that every call walks through.
class PlainModel {
 public:
  void Write(const std::string& section, const std::string& key, const std::string& value) {
    size_t place = Header(section);
    if (place == lines_.size()) {
      lines_.push_back("[" + section + "]");
      lines_.push_back(key + "=" + value);
      return;
    }
    size_t last = place;
    for (++place; place < lines_.size() && lines_[place].front() != '['; ++place) {
      if (lines_[place].front() == ';') continue;
      last = place;
      if (!lines_[place].starts_with(key + "=")) continue;
      lines_[place] = key + "=" + value;
      return;
    }
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(last) + 1, key + "=" + value);
  }

  void Add(const std::string& line) { lines_.push_back(line); }

  std::string Text() const {
    std::string text;
    for (const std::string& line : lines_) text += line + "\n";
    return text;
  }

 private:
  size_t Header(const std::string& section) const {
    const auto found = std::find(lines_.begin(), lines_.end(), "[" + section + "]");
    return static_cast<size_t>(found - lines_.begin());
  }

  std::vector<std::string> lines_;
};

TEST(ProfileFile, AgreesWithAPlainModelOnRandomWrites) {
  std::mt19937 random(20261121);
  const auto pick = [&](unsigned below) { return static_cast<unsigned>(random() % below); };
  for (int round = 0; round < 200; ++round) {
    PlainModel plain;
    for (unsigned i = pick(12); i > 0; --i) {
      const std::string number = std::to_string(pick(4));
      const std::string lines[] = {"[s" + number + "]", "k" + number + "=" + number, ";k1=9"};
      plain.Add(lines[pick(3)]);
    }
    ProfileFile file(plain.Text());
    for (int i = 0; i < 40; ++i) {
      const std::string section = "s" + std::to_string(pick(6));
      const std::string key = "k" + std::to_string(pick(6));
      const std::string value = std::to_string(pick(1000));
      plain.Write(section, key, value);
      file.Write(section, key, value);
      ASSERT_THAT(file.Read(section, key), Optional(value));
      if (pick(8) == 0) file = ProfileFile(file.Serialize());
    }
    // An empty file has no line whose end could be copied.
    std::string text = file.Serialize();
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    ASSERT_EQ(text, plain.Text());
  }
}

}  // namespace
}  // namespace quorvane
