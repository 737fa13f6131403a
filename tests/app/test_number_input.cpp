#include <QtTest>

#include "app/number_input.h"

class TestNumberInput : public QObject {
    Q_OBJECT
private slots:
    void accepted_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("whole") << "30" << 30.0;
        QTest::newRow("blanks") << "  45.5 " << 45.5;
        QTest::newRow("sign") << "-12" << -12.0;
        QTest::newRow("plus") << "+7" << 7.0;
        QTest::newRow("exponent") << "1.5e1" << 15.0;
        QTest::newRow("leading point") << ".5" << 0.5;
    }
    void accepted() {
        QFETCH(QString, text);
        QFETCH(double, value);
        const auto parsed = parseTypedNumber(text.toStdString());
        QVERIFY(parsed.has_value());
        QCOMPARE(*parsed, value);
    }

    void refused_data() {
        QTest::addColumn<QString>("text");
        for (const char* bad : {"", "   ", "abc", "1e999", "nan", "NaN", "inf", "-inf", "1,5", "12abc", "0x10", "--1",
                                "1-", ".", "e5", "1.2.3"})
            QTest::newRow(bad[0] ? bad : "empty") << QString::fromLatin1(bad);
    }
    void refused() {
        QFETCH(QString, text);
        QVERIFY(!parseTypedNumber(text.toStdString()).has_value());
    }
};

QTEST_APPLESS_MAIN(TestNumberInput)
#include "test_number_input.moc"
