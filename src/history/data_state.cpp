#include "history/data_state.h"

#include <algorithm>

void DataState::setPairs(const std::vector<history::AnglePair>& pairs) {
    const auto same = [](const history::AnglePair& a, const history::AnglePair& b) {
        return a.incidence == b.incidence && a.refraction == b.refraction;
    };
    if (std::equal(pairs.begin(), pairs.end(), pairs_.begin(), pairs_.end(), same)) return;
    pairs_ = pairs;
    emit pairsChanged();
}

void DataState::setDataIndex(double index) {
    if (index == dataIndex_) return;
    dataIndex_ = index;
    emit dataIndexChanged(index);
}
