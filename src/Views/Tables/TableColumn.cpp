#include "Tables/TableColumn.h"
#include <algorithm>
#include <numeric>
#include <utility>

namespace quillane {

namespace {

int leastOf(const TableColumn& column) {
    return column.narrowest > 0 ? std::min(column.narrowest, column.width) : column.width;
}

std::vector<std::size_t> inOrderOfGiving(const std::vector<TableColumn>& columns) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!columns[i].stretches && leastOf(columns[i]) < columns[i].width) {
            order.push_back(i);
        }
    }
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return std::pair(columns[a].narrowRank, a) < std::pair(columns[b].narrowRank, b);
    });
    return order;
}

void shareOut(const std::vector<TableColumn>& columns, std::vector<int>& widths, int spare) {
    auto count = static_cast<int>(std::count_if(columns.begin(), columns.end(),
                                                [](const TableColumn& column) { return column.stretches; }));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].stretches) {
            const int part = spare / count--;
            spare -= part;
            const int widest = columns[i].widest > 0 ? columns[i].widest : columns[i].width + part;
            widths[i] = std::min(columns[i].width + part, std::max(widest, columns[i].width));
        }
    }
}

constexpr int kLeastEver = 40; // of a stretching column when nothing else can give

} // namespace

std::vector<int> columnWidths(const std::vector<TableColumn>& columns, int available) {
    std::vector<int> widths;
    widths.reserve(columns.size());
    for (const TableColumn& column : columns) {
        widths.push_back(column.width);
    }
    int spare = available - std::accumulate(widths.begin(), widths.end(), 0);
    if (spare >= 0) {
        shareOut(columns, widths, spare);
        return widths;
    }
    for (const std::size_t i : inOrderOfGiving(columns)) {
        const int given = std::min(-spare, widths[i] - leastOf(columns[i]));
        widths[i] -= given;
        spare += given;
    }
    for (std::size_t i = 0; i < columns.size() && spare < 0; ++i) {
        if (columns[i].stretches) {
            const int given = std::clamp(widths[i] - kLeastEver, 0, -spare);
            widths[i] -= given;
            spare += given;
        }
    }
    return widths;
}

} // namespace quillane
