#include <QtTest>

#include <cmath>
#include <limits>

#include "canvas/number_format.h"

class TestNumberFormat : public QObject {
    Q_OBJECT
private slots:
    void fixedFormats_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("expected");
        // Half away from zero on the decimal value, not on the binary double.
        QTest::newRow("0.075") << 0.075 << "0.00" << "0.08";
        QTest::newRow("-0.075") << -0.075 << "0.00" << "-0.08";
        QTest::newRow("2.5 whole") << 2.5 << "0" << "3";
        QTest::newRow("-2.5 whole") << -2.5 << "0" << "-3";
        QTest::newRow("1.005") << 1.005 << "0.00" << "1.01";
        QTest::newRow("carry") << 9.995 << "0.00" << "10.00";
        QTest::newRow("carry whole") << 99.5 << "0" << "100";
        QTest::newRow("small") << 0.00049 << "0.000" << "0.000";
        QTest::newRow("small up") << 0.0005 << "0.000" << "0.001";
        QTest::newRow("tiny") << 1e-20 << "0.00" << "0.00";
        QTest::newRow("negative to zero") << -0.001 << "0.00" << "0.00";
        QTest::newRow("one decimal") << 1.25 << "0.0" << "1.3";
        QTest::newRow("four") << 1.33333333 << "0.0000" << "1.3333";
        QTest::newRow("six") << 22.01667 << "0.000000" << "22.016670";
        QTest::newRow("large") << 123456789.0 << "0.00" << "123456789.00";
        QTest::newRow("zero") << 0.0 << "0.0" << "0.0";
        QTest::newRow("pi") << 3.14159265358979 << "0.00" << "3.14";
    }
    void fixedFormats() {
        QFETCH(double, value);
        QFETCH(QString, pattern);
        QFETCH(QString, expected);
        QCOMPARE(QString::fromStdString(formatNumber(value, pattern.toStdString())), expected);
    }

    void scientificFormat_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("123.456") << 123.456 << "1.23e+02";
        QTest::newRow("small") << 0.00123 << "1.23e-03";
        QTest::newRow("negative") << -45.0 << "-4.50e+01";
        QTest::newRow("carry") << 9.999 << "1.00e+01";
        QTest::newRow("half") << 1.235 << "1.24e+00";
        QTest::newRow("zero") << 0.0 << "0.00e+00";
        QTest::newRow("big exponent") << 1.5e123 << "1.50e+123";
    }
    void scientificFormat() {
        QFETCH(double, value);
        QFETCH(QString, expected);
        QCOMPARE(QString::fromStdString(formatNumber(value, "0.00e+00")), expected);
    }

    void nonFiniteValuesAreReadable() {
        QCOMPARE(QString::fromStdString(formatNumber(std::numeric_limits<double>::quiet_NaN(), "0.00")),
                 QStringLiteral("NaN"));
        QCOMPARE(QString::fromStdString(formatNumber(std::numeric_limits<double>::infinity(), "0.00")),
                 QStringLiteral("∞"));
        QCOMPARE(QString::fromStdString(formatNumber(-std::numeric_limits<double>::infinity(), "0")),
                 QStringLiteral("-∞"));
    }
};

QTEST_APPLESS_MAIN(TestNumberFormat)
#include "test_number_format.moc"
