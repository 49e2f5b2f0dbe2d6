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
    QTest::addColumn<int>("inserted");
    QTest::addColumn<int>("removed");
    QTest::addColumn<int>("moved");
    QTest::addColumn<int>("changed");
    QTest::newRow("the same") << QByteArray("abcd") << QByteArray("abcd") << 0 << 0 << 0 << 0;
    QTest::newRow("filled") << QByteArray("") << QByteArray("ab") << 2 << 0 << 0 << 0;
    QTest::newRow("emptied") << QByteArray("ab") << QByteArray("") << 0 << 2 << 0 << 0;
    QTest::newRow("first leaves") << QByteArray("abcd") << QByteArray("bcd") << 0 << 1 << 0 << 0;
    QTest::newRow("step on") << QByteArray("abcd") << QByteArray("bcde") << 1 << 1 << 0 << 0;
    QTest::newRow("last to front") << QByteArray("abcd") << QByteArray("dabc") << 0 << 0 << 1 << 0;
    QTest::newRow("one edited") << QByteArray("abcd") << QByteArray("aBcd") << 0 << 0 << 0 << 1;
    QTest::newRow("twins") << QByteArray("aa") << QByteArray("aaa") << 1 << 0 << 0 << 0;
    QTest::newRow("a twin leaves") << QByteArray("aba") << QByteArray("ab") << 0 << 1 << 0 << 0;
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
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.setRows(rowsFrom(after));
    QVERIFY(model.rows() == rowsFrom(after));
    QTEST(static_cast<int>(inserted.size()), "inserted");
    QTEST(static_cast<int>(removed.size()), "removed");
    QTEST(static_cast<int>(moved.size()), "moved");
    QTEST(static_cast<int>(changed.size()), "changed");
    QCOMPARE(reset.size(), 0);
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
