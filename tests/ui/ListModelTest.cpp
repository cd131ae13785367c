#include "ui/ListModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <deque>
#include <string>

namespace kelvo {
namespace {

template <class Model>
QStringList shown(const Model& model) {
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows.append(model.data(model.index(row), Qt::UserRole).toString());
    return rows;
}

QStringList told(QSignalSpy& spy) {
    QStringList spans;
    for (const QList<QVariant>& each : spy) {
        const auto row = [](const QVariant& value) {
            return value.canConvert<QModelIndex>() ? value.toModelIndex().row() : value.toInt();
        };
        const bool change = each.at(0).value<QModelIndex>().isValid();
        spans.append(QStringLiteral("%1-%2")
                         .arg(row(each.at(change ? 0 : 1)))
                         .arg(row(each.at(change ? 1 : 2))));
    }
    return spans;
}

using Values = ListModel<std::vector<std::string>>;

std::vector<Values::Column> valueColumns() {
    return {
        {"value", [](const std::string& row) { return QVariant(QString::fromStdString(row)); }}};
}

TEST(ListModel, TellsApartWhatCameWentAndChanged) {
    struct Case {
        const char* name;
        std::vector<std::string> before;
        std::vector<std::string> after;
        QStringList inserted;
        QStringList removed;
        QStringList changed;
    };
    const Case cases[] = {
        {"first rows", {}, {"a", "b"}, {"0-1"}, {}, {}},
        {"nothing", {"a", "b"}, {"a", "b"}, {}, {}, {}},
        {"one changed", {"a", "b", "c"}, {"a", "x", "c"}, {}, {}, {"1-1"}},
        {"appended", {"a"}, {"a", "b", "c"}, {"1-2"}, {}, {}},
        {"prepended", {"b"}, {"a", "b"}, {"0-0"}, {}, {}},
        {"taken from the middle", {"a", "b", "c"}, {"a", "c"}, {}, {"1-1"}, {}},
        {"all went", {"a", "b"}, {}, {}, {"0-1"}, {}},
        {"changed and longer", {"a", "b"}, {"x", "y", "z"}, {"2-2"}, {}, {"0-1"}},
        {"changed and shorter", {"a", "b", "c"}, {"x"}, {}, {"1-2"}, {"0-0"}},
        {"repeated values", {"a", "a"}, {"a", "a", "a"}, {"2-2"}, {}, {}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Values model(valueColumns());
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::Warning);
        model.show(each.before);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

        model.show(each.after);

        EXPECT_EQ(told(inserted), each.inserted);
        EXPECT_EQ(told(removed), each.removed);
        EXPECT_EQ(told(changed), each.changed);
        EXPECT_EQ(reset.count(), 0);
        QStringList expected;
        for (const std::string& row : each.after)
            expected.append(QString::fromStdString(row));
        EXPECT_EQ(shown(model), expected);
    }
}

template <RowOrder order>
using Growing = RowsView<std::deque<std::string>, order>;

TEST(ListModel, RowsOfAGrowingListAreInsertedWhereTheyAreNew) {
    std::deque<std::string> rows{"a"};
    ListModel<Growing<RowOrder::newestFirst>> newest(valueColumns());
    ListModel<Growing<RowOrder::oldestFirst>> oldest(valueColumns());
    newest.show(Growing<RowOrder::newestFirst>(rows));
    oldest.show(Growing<RowOrder::oldestFirst>(rows));
    QSignalSpy inFront(&newest, &QAbstractItemModel::rowsInserted);
    QSignalSpy atTheEnd(&oldest, &QAbstractItemModel::rowsInserted);

    rows.push_back("b");
    rows.push_back("c");
    EXPECT_EQ(shown(newest), QStringList{"a"}) << "rows that were not announced are not shown";
    newest.show(Growing<RowOrder::newestFirst>(rows));
    oldest.show(Growing<RowOrder::oldestFirst>(rows));

    EXPECT_EQ(told(inFront), QStringList{"0-1"});
    EXPECT_EQ(told(atTheEnd), QStringList{"1-2"});
    EXPECT_EQ(shown(newest), (QStringList{"c", "b", "a"}));
    EXPECT_EQ(shown(oldest), (QStringList{"a", "b", "c"}));
}

TEST(ListModel, ALongGrowingListIsShownWithoutReadingItsRows) {
    static int reads = 0;
    std::deque<std::string> rows(100'000, "row");
    ListModel<Growing<RowOrder::newestFirst>> model({{"value", [](const std::string& row) {
                                                          ++reads;
                                                          return QVariant(int(row.size()));
                                                      }}});
    model.show(Growing<RowOrder::newestFirst>(rows));
    rows.push_back("one more");
    model.show(Growing<RowOrder::newestFirst>(rows));
    EXPECT_EQ(model.rowCount(), 100'001);
    EXPECT_EQ(reads, 0);
    EXPECT_EQ(model.data(model.index(0), Qt::UserRole).toInt(), 8);
}

} // namespace
} // namespace kelvo
