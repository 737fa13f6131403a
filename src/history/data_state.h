#pragma once
#include <QObject>

#include <vector>

#include "history/data_pairs.h"

// The data screen's values, held once: the pairs the last analysis took
// (typed into the grid or read from a loaded table's lists) and the index
// fitted to them. The graphs and the lab report are drawn from these pairs,
// and Snell's law "according to data" and any other screen read the index
// here.
class DataState : public QObject {
    Q_OBJECT
public:
    const std::vector<history::AnglePair>& pairs() const { return pairs_; }
    void setPairs(const std::vector<history::AnglePair>& pairs);

    // n = 1 / slope of sin r on sin i; 0 until the first analysis.
    double dataIndex() const { return dataIndex_; }
    void setDataIndex(double index);

signals:
    void pairsChanged();
    void dataIndexChanged(double index);

private:
    std::vector<history::AnglePair> pairs_;
    double dataIndex_ = 0.0;
};
