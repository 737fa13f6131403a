#include <QtTest>

#include "core/number_input.h"

class TestNumberInput : public QObject {
    Q_OBJECT
private slots:
    void accepted() {
        // Greek pupils write the decimal mark as a comma.
        const std::pair<const char*, double> rows[] = {
            {"30", 30.0}, {"  45.5 ", 45.5}, {"-12", -12.0},   {"+7", 7.0},     {"1.5e1", 15.0}, {".5", 0.5},
            {"1,5", 1.5}, {" 30,5 ", 30.5},  {"-0,25", -0.25}, {"1,5e1", 15.0}, {",5", 0.5}};
        for (const auto& [text, value] : rows) {
            const auto parsed = parseTypedNumber(text);
            QVERIFY2(parsed.has_value(), text);
            QCOMPARE(*parsed, value);
        }
    }

    void refused() {
        for (const char* bad :
             {"", "   ", "abc", "1e999", "nan", "NaN", "inf", "-inf", "12abc", "0x10", "--1", "1-", ".", "e5", "1.2.3",
              // A comma together with a point, or two commas: which one is the decimal mark
              // cannot be told, so neither reading is guessed.
              "1,5.2", "1.5,2", "1,,5", "1,2,3", ",", "1e1,5", "1,000.5"})
            QVERIFY2(!parseTypedNumber(bad).has_value(), bad);
        // A table file separates its cells with commas: there a comma is
        // never a decimal mark.
        QCOMPARE(parsePointNumber("19.5"), std::optional<double>(19.5));
        QVERIFY(!parsePointNumber("19,5"));
    }

    void typedIndex() {
        using Kind = TypedIndex::Kind;
        QCOMPARE(readTypedIndex("  ").kind, Kind::Cancelled);
        QCOMPARE(readTypedIndex("abc").kind, Kind::NotANumber);
        QCOMPARE(readTypedIndex("1,,5").kind, Kind::NotANumber);
        // Outside what the screens can print as n and 1/n.
        for (const char* far : {"0", "-1.5", "1e7", "1e-320", "0.009", "100.5"})
            QCOMPARE(readTypedIndex(far).kind, Kind::OutOfRange);
        for (const auto& [text, value] : {std::pair{"0,01", 0.01}, std::pair{"100", 100.0}, std::pair{"1,33", 1.33}}) {
            const TypedIndex typed = readTypedIndex(text);
            QCOMPARE(typed.kind, Kind::Valid);
            QCOMPARE(typed.value, value);
        }
    }
};

QTEST_APPLESS_MAIN(TestNumberInput)
#include "test_number_input.moc"
