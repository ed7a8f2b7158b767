#ifndef KTESTTABLE_H
#define KTESTTABLE_H

#include <QtTest>

#include <tuple>
#include <utility>

// Data tables one line per row: addColumns<QString, bool>() makes the
// columns, addRow("tag", "a text", true) adds a row, and in the test
// const auto [text, flag] = fetch<QString, bool>() reads the current one, so
// the names of the columns are those of the binding. Texts become UTF-8
// QStrings; every other value must have its column's type exactly.
namespace KTestTable {

// Column names are kept by QtTest as pointers: these live for the process.
constexpr const char* kColumns[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};

template <typename... T>
void addColumns()
{
    static_assert(sizeof...(T) <= std::size(kColumns), "too many columns");
    int column = 0;
    (QTest::addColumn<T>(kColumns[column++]), ...);
}

template <typename... T>
void addRow(const char* tag, const T&... values)
{
    (QTest::newRow(tag) << ... << values);
}

template <typename... T, std::size_t... I>
std::tuple<T...> fetch(std::index_sequence<I...>)
{
    // What QFETCH does for one named column, for all of them at once.
    return {*static_cast<T*>(QTest::qData(kColumns[I], qMetaTypeId<T>()))...};
}

template <typename... T>
std::tuple<T...> fetch()
{
    return fetch<T...>(std::index_sequence_for<T...>());
}

} // namespace KTestTable

#endif // KTESTTABLE_H
