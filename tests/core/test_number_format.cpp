#include <QtTest>

#include <limits>

#include "core/number_format.h"

class TestNumberFormat : public QObject {
    Q_OBJECT
private slots:
    void formats() {
        const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
        // Half away from zero on the decimal value, not on the binary double;
        // a carry into a new digit, leading zeros, no minus on zero.
        const struct {
            double value;
            const char* pattern;
            const char* expected;
        } rows[] = {{0.075, "0.00", "0.08"},
                    {-0.075, "0.00", "-0.08"},
                    {1.005, "0.00", "1.01"},
                    {9.995, "0.00", "10.00"},
                    {99.5, "0", "100"},
                    {0.0005, "0.000", "0.001"},
                    {-0.001, "0.00", "0.00"},
                    {22.01667, "0.000000", "22.016670"},
                    {123456789.0, "0.00", "123456789.00"},
                    {123.456, "0.00e+00", "1.23e+02"},
                    {0.00123, "0.00e+00", "1.23e-03"},
                    {-45.0, "0.00e+00", "-4.50e+01"},
                    {1.235, "0.00e+00", "1.24e+00"},
                    {9.999, "0.00e+00", "1.00e+01"},
                    {1.5e123, "0.00e+00", "1.50e+123"},
                    {nan, "0.00", "NaN"},
                    {-inf, "0", "-∞"}};
        for (const auto& [value, pattern, expected] : rows)
            QCOMPARE(QString::fromStdString(formatNumber(value, pattern)), QString::fromUtf8(expected));
    }
};

QTEST_APPLESS_MAIN(TestNumberFormat)
#include "test_number_format.moc"
