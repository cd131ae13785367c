#include "base/Text.h"
#include "setup/Answers.h"
#include "setup/CsvList.h"
#include "setup/OscalCatalog.h"
#include "setup/StarterLists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace kelvo {
namespace {

/// The faults as they are told, or each row as "id|title|weight|level|evidence|gap|tsc|due|role|
/// close|task".
std::string told(const tl::expected<OrganisationList, ListFaults>& list) {
    std::vector<std::string> lines;
    if (!list) {
        for (const ListFault& fault : list.error())
            lines.push_back(sentence(fault, "x.csv"));
    } else {
        for (const OrganisationRow& row : list->rows) {
            lines.push_back(
                joined({row.id, row.title, std::to_string(row.weight), fixed(row.level, 2),
                        row.evidence, row.gap, joined(row.tsc, " "), std::string(fileWord(row.due)),
                        row.role, std::string(fileWord(row.close)), row.task},
                       "|"));
        }
    }
    return joined(lines, "\n");
}

struct Case {
    std::string text;
    std::string told;
};

TEST(CsvList, WhatSpreadsheetsMakeOfItIsRead) {
    const std::string plain = "a|One|3|0.00||||annual|Owner|attest|One";
    const std::vector<Case> cases{
        {"id,title\na,One\n", plain},
        {"id,title\na,One", plain},
        {"\xEF\xBB\xBFid;title\r\na;One\r\n;\r\n", plain},
        {"ID , Title,\r\"a\", One ,\r  , ,\r", plain},
        {"title;id\n\"One\";a;;\n", plain},
        {"id,title\na,\"One\r\n two\"\"s\"\nb,2\" pipe\n",
         "a|One two\"s|3|0.00||||annual|Owner|attest|One two\"s\n"
         "b|2\" pipe|3|0.00||||annual|Owner|attest|2\" pipe"},
        {"id;title;weight;level;evidence;gap;tsc;frequency;role;close;task\n"
         "a;One;8;0,5;\"seen\nread\";lost;CC6.1  CC6.2;Quarterly;engineer;OS;Do it\n"
         "b;Two;0;1;;;;EVENT;Engineer;Generate\n"
         "c;Three;1000;0;;;;;owner;\n",
         "a|One|8|0.50|seen\nread|lost|CC6.1 CC6.2|quarterly|engineer|os|Do it\n"
         "b|Two|0|1.00||||event|engineer|generate|Two\n"
         "c|Three|1000|0.00||||annual|Owner|attest|Three"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(told(readCsvList(each.text)), each.told) << each.text;
}

TEST(CsvList, EveryFaultIsToldWithItsLine) {
    const std::string letters(65, 'x');
    const std::vector<Case> cases{
        {"", "x.csv: the file is empty."},
        {"\n\n", "x.csv: the file is empty."},
        {"id,title\n", "x.csv: there is no criterion in it."},
        {"name,wieght,id,ID\na,b,c\n", "Line 1 of x.csv: there is no column “name”.\n"
                                       "Line 1 of x.csv: there is no column “wieght”.\n"
                                       "Line 1 of x.csv: the column “id” is named twice.\n"
                                       "Line 1 of x.csv: the column “title” is missing."},
        {"id,title\na,\"x\ny\"\nCC6 access,T\n1a,T\na,T\né,T\n,T\nb,\n" + letters + ",T\n",
         "Line 4 of x.csv: the id “CC6 access” holds a blank.\n"
         "Line 5 of x.csv: the id “1a” does not begin with a letter.\n"
         "Line 6 of x.csv: the id “a” is taken by line 2.\n"
         "Line 7 of x.csv: the id “é” does not begin with a letter.\n"
         "Line 8 of x.csv: the id is missing.\n"
         "Line 9 of x.csv: the title is missing.\n"
         "Line 10 of x.csv: the id “" +
             letters + "” is longer than 64 characters."},
        {"id,title,weight,level\na,T,-1,0\nb,T,1001,1.01\nc,T,3.5,50%\nd,T,many,nan\n"
         "e,T,99999999999999999999,\"0,5\"\n",
         "Line 2 of x.csv: the weight -1 is not within 0 and 1000.\n"
         "Line 3 of x.csv: the level “1.01” is not a number within 0 and 1.\n"
         "Line 3 of x.csv: the weight 1001 is not within 0 and 1000.\n"
         "Line 4 of x.csv: the weight “3.5” is not a whole number within 0 and 1000.\n"
         "Line 4 of x.csv: the level “50%” is not a number within 0 and 1.\n"
         "Line 5 of x.csv: the weight “many” is not a whole number within 0 and 1000.\n"
         "Line 5 of x.csv: the level “nan” is not a number within 0 and 1.\n"
         "Line 6 of x.csv: the weight “99999999999999999999” is not a whole number within 0 and "
         "1000.\n"
         "Line 6 of x.csv: the level “0,5” is not a number within 0 and 1."},
        {"id,title,frequency,close,role,tsc\na,T,yearly,,,\nb,T,,sign,,\nc,T,,,auditor,\n"
         "d,T,,,,CC6/1 CC6.2\n",
         "Line 2 of x.csv: there is no frequency “yearly”.\n"
         "Line 3 of x.csv: there is no close “sign”.\n"
         "Line 4 of x.csv: the role Auditor only looks, so it can have no row.\n"
         "Line 5 of x.csv: “CC6/1” in tsc is no id of a criterion."},
        {"id,title,,evidence,gap\na,T,x,,\nb,T,,,,y\nc,T,,GAP: one,two\nd,\x1b[2J,,,\n",
         "Line 2 of x.csv: there is text in a column without a name.\n"
         "Line 3 of x.csv: there are more fields than columns.\n"
         "Line 4 of x.csv: the evidence holds “GAP:”, and there is a gap besides.\n"
         "Line 5 of x.csv: the title holds a control character."},
        {"id,title\r\n\"a\",\r\n,T\r,T", "Line 2 of x.csv: the title is missing.\n"
                                         "Line 3 of x.csv: the id is missing.\n"
                                         "Line 4 of x.csv: the id is missing."},
        {"id,title\na,\"One\" two\nb,\"never\nclosed\n",
         "Line 2 of x.csv: there is text behind a closing quote.\n"
         "Line 3 of x.csv: a quote is opened and never closed."},
        {"id,title\na,T\nb,caf\xE9\n",
         "Line 3 of x.csv: the text is not UTF-8; save the spreadsheet as CSV UTF-8."},
        {"id,title,gap\na,T," + std::string(65537, 'g'),
         "Line 2 of x.csv: the gap is longer than 64 KiB."},
    };
    for (const Case& each : cases)
        EXPECT_EQ(told(readCsvList(each.text)), each.told) << each.text.substr(0, 200);
}

TEST(OscalCatalog, GivesEveryControlThatIsNotWithdrawnAndRefusesWhatIsNone) {
    const std::vector<Case> cases{
        {R"j({"catalog":{"groups":[{"title":"G","groups":[{"title":"H","controls":[
              {"id":"ac-1","title":"Rules\n are written","props":[{"name":"label","value":"AC-1"},
               {"name":"label","value":"AC-01"}],"controls":[{"id":"ac-1.1","title":"More",
               "props":[{"name":"label","value":"AC-1(1)"}]}]},
              {"id":"ac-2","title":"Gone","props":[{"name":"status","value":"withdrawn"}]}]
}]
}],
             "controls":[{"id":"z","title":"First"}]
}
})j",
         "z|First|3|0.00||||annual|Owner|attest|First\n"
         "ac-1|Rules are written|3|0.00|||AC-1|annual|Owner|attest|Rules are written\n"
         "ac-1.1|More|3|0.00||||annual|Owner|attest|More"},
        {R"j({"catalog":{}})j", "x.csv: there is no criterion in it."},
        {R"j({"profile":{}})j", "x.csv: there is no member “catalog”, so it is no OSCAL catalog."},
        {"[]", "x.csv: there is no member “catalog”, so it is no OSCAL catalog."},
        {R"j({"catalog":[]})j", "x.csv: catalog: expected an object."},
        {R"j({"catalog":{"controls":[{"id":"a"}]}})j",
         "x.csv: catalog: controls[0].title: missing."},
        {R"j({"catalog":{"controls":[{"id":"_a","title":"T"},{"id":"b","title":""},
             {"id":"b","title":"T"}]}})j",
         "x.csv: the control “_a”: the id “_a” does not begin with a letter.\n"
         "x.csv: the control “b”: the title is missing.\n"
         "x.csv: the control “b”: the id “b” is taken."},
    };
    for (const Case& each : cases)
        EXPECT_EQ(told(readOscalCatalog(each.text)), each.told) << each.text;
}

TEST(StarterLists, CoverAllCommonCriteriaAndKeepWhatEveryListMustKeep) {
    for (const auto& [which, rows, weight, roles] :
         {std::tuple(Starter::brief, 13U, 57, "Owner 7 People lead 1 Engineer 5 Auditor 0 "),
          std::tuple(Starter::detailed, 27U, 101,
                     "Owner 11 People lead 4 Engineer 12 Auditor 0 ")}) {
        const OrganisationList list = starterList(which);
        EXPECT_EQ(list.rows.size(), rows);
        EXPECT_EQ(settled(list).value(), list);
        std::set<std::string> criteria;
        std::int64_t sum = 0;
        for (const OrganisationRow& row : list.rows) {
            criteria.insert(row.tsc.begin(), row.tsc.end());
            sum += row.weight;
            EXPECT_EQ(row.close == CloseBy::os, row.title.starts_with("Laptops")) << row.id;
        }
        EXPECT_EQ(criteria.size(), 33U);
        EXPECT_EQ(sum, weight);
        std::string found;
        for (const ListRole& role : rolesOf(list))
            found += role.name + " " + std::to_string(role.tasks) + " ";
        EXPECT_EQ(found, roles);
    }
}

TEST(Answers, WhatTheOrganisationDoesNotHaveIsLeftOff) {
    const auto left = [](Starter which, bool premises, bool devices) {
        std::vector<std::string> gone;
        const OrganisationList all = starterList(which);
        const OrganisationList some = answered(all, {.premises = premises, .devices = devices});
        for (const OrganisationRow& row : all.rows) {
            if (std::find(some.rows.begin(), some.rows.end(), row) == some.rows.end())
                gone.push_back(row.id);
        }
        return joined(gone, " ");
    };
    EXPECT_EQ(left(Starter::brief, true, true), "");
    EXPECT_EQ(left(Starter::brief, false, true), "CC6-premises");
    EXPECT_EQ(left(Starter::brief, true, false), "CC6-devices");
    EXPECT_EQ(left(Starter::detailed, false, false), "premises disposal boundary devices");
}

} // namespace
} // namespace kelvo
