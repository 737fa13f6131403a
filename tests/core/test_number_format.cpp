#include <QtTest>

#include <limits>

#include "core/number_format.h"

class TestNumberFormat : public QObject {
    Q_OBJECT
private slots:
    void formats_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("expected");
        // Half away from zero on the decimal value, not on the binary double.
        QTest::newRow("0.075") << 0.075 << "0.00"
                               << "0.08";
        QTest::newRow("-0.075") << -0.075 << "0.00"
                                << "-0.08";
        QTest::newRow("1.005") << 1.005 << "0.00"
                               << "1.01";
        QTest::newRow("carry") << 9.995 << "0.00"
                               << "10.00";
        QTest::newRow("carry whole") << 99.5 << "0"
                                     << "100";
        QTest::newRow("leading zeros") << 0.0005 << "0.000"
                                       << "0.001";
        QTest::newRow("no minus on zero") << -0.001 << "0.00"
                                          << "0.00";
        QTest::newRow("padded") << 22.01667 << "0.000000"
                                << "22.016670";
        QTest::newRow("large") << 123456789.0 << "0.00"
                               << "123456789.00";
        QTest::newRow("sci") << 123.456 << "0.00e+00"
                             << "1.23e+02";
        QTest::newRow("sci small") << 0.00123 << "0.00e+00"
                                   << "1.23e-03";
        QTest::newRow("sci negative") << -45.0 << "0.00e+00"
                                      << "-4.50e+01";
        QTest::newRow("sci half") << 1.235 << "0.00e+00"
                                  << "1.24e+00";
        QTest::newRow("sci carry") << 9.999 << "0.00e+00"
                                   << "1.00e+01";
        QTest::newRow("sci 3 digits") << 1.5e123 << "0.00e+00"
                                      << "1.50e+123";
        QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << "0.00"
                             << "NaN";
        QTest::newRow("-inf") << -std::numeric_limits<double>::infinity() << "0"
                              << "-∞";
    }
    void formats() {
        QFETCH(double, value);
        QFETCH(QString, pattern);
        QFETCH(QString, expected);
        QCOMPARE(QString::fromStdString(formatNumber(value, pattern.toStdString())), expected);
    }
};

QTEST_APPLESS_MAIN(TestNumberFormat)
#include "test_number_format.moc"
