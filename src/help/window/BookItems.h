// Rows of the help window's lists with the hidden cells behind them.
#pragma once

#include <QListWidgetItem>
#include <QTreeWidgetItem>

#include "BookContents.h"
#include "HelpSearch.h"

class ContentsItem final : public QTreeWidgetItem {
public:
    explicit ContentsItem(BookRow bookRow) : QTreeWidgetItem(UserType), row(std::move(bookRow)) {
        setText(0, row.name);
        // A chapter shows that it opens, even onto nothing.
        if (isChapter())
            setChildIndicatorPolicy(ShowIndicator);
    }

    bool isChapter() const { return row.kind == RowKind::Chapter; }

    const BookRow row;
};

class IndexItem final : public QListWidgetItem {
public:
    explicit IndexItem(BookRow bookRow)
        : QListWidgetItem(bookRow.name, nullptr, UserType), row(std::move(bookRow)) {}

    const BookRow row;
};

class SearchItem final : public QListWidgetItem {
public:
    SearchItem(SearchRow searchRow, const QIcon& icon)
        : QListWidgetItem(icon, searchRow.name, nullptr, UserType), row(std::move(searchRow)) {}

    const SearchRow row;
};
