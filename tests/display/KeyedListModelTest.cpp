#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include "kit/KeyedListModel.h"

#include <random>
#include <string>

namespace {

struct Row {
    int id = 0;
    int version = 0;

    int key() const { return id; }
    friend bool operator==(const Row&, const Row&) = default;
};

class RowModel final : public tessivo::KeyedListModel<Row> {
public:
    RowModel() : KeyedListModel("row") {}
};

std::vector<Row> rowsFrom(const QByteArray& letters) {
    std::vector<Row> rows;
    for (const char letter : letters) {
        // An upper-case letter is a newer version of its lower-case row.
        rows.push_back({std::tolower(letter), std::isupper(letter) ? 1 : 0});
    }
    return rows;
}

}  // namespace

Q_DECLARE_METATYPE(Row)

class KeyedListModelTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesOnlyWhatDiffers_data();
    void changesOnlyWhatDiffers();
    void followsAnyHistory();
};

void KeyedListModelTest::changesOnlyWhatDiffers_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QByteArray>("steps");  // inserted, removed, moved, changed
    const char* const rows[][4] = {
        {"the same", "abcd", "abcd", "0 0 0 0"},   {"filled", "", "ab", "2 0 0 0"},
        {"emptied", "ab", "", "0 2 0 0"},          {"first leaves", "abcd", "bcd", "0 1 0 0"},
        {"step on", "abcd", "bcde", "1 1 0 0"},    {"last to front", "abcd", "dabc", "0 0 1 0"},
        {"one edited", "abcd", "aBcd", "0 0 0 1"}, {"twins", "aa", "aaa", "1 0 0 0"},
        {"a twin leaves", "aba", "ab", "0 1 0 0"},
    };
    for (const auto& [name, before, after, steps] : rows) {
        QTest::newRow(name) << QByteArray(before) << QByteArray(after) << QByteArray(steps);
    }
}

void KeyedListModelTest::changesOnlyWhatDiffers() {
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    RowModel model;
    model.setRows(rowsFrom(before));
    const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    const QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    const QSignalSpy moved(&model, &QAbstractItemModel::rowsMoved);
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    model.setRows(rowsFrom(after));
    QVERIFY(model.rows() == rowsFrom(after));
    QByteArray steps;
    for (const QSignalSpy* spy : {&inserted, &removed, &moved, &changed}) {
        steps += QByteArray::number(spy->size()) + ' ';
    }
    QTEST(steps.trimmed(), "steps");
}

void KeyedListModelTest::followsAnyHistory() {
    RowModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    std::mt19937 random(20010101);
    for (int round = 0; round < 2000; ++round) {
        std::vector<Row> rows(random() % 9);
        for (Row& row : rows) {
            row = {static_cast<int>(random() % 6), static_cast<int>(random() % 2)};
        }
        model.setRows(rows);
        QVERIFY(model.rows() == rows);
        QCOMPARE(model.rowCount(), static_cast<int>(rows.size()));
    }
}

QTEST_GUILESS_MAIN(KeyedListModelTest)
#include "KeyedListModelTest.moc"
