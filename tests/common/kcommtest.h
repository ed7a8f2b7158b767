#ifndef KCOMMTEST_H
#define KCOMMTEST_H

#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>

#include <QtTest>

#include <tuple>
#include <utility>

// Data tables one line per row: addColumns<QString, bool>() makes the
// columns, addRow("tag", "a text", true) adds a row, and in the test
// const auto [text, flag] = fetch<QString, bool>() reads the current one.
// Texts become UTF-8 QStrings; every other value must have its column's
// type exactly.
// Column names, kept as QtTest keeps them: as pointers.
constexpr const char* kColumns[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};

template <typename... T>
void addColumns()
{
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
    return {*static_cast<T*>(QTest::qData(kColumns[I], qMetaTypeId<T>()))...};
}

template <typename... T>
std::tuple<T...> fetch()
{
    return fetch<T...>(std::index_sequence_for<T...>());
}

inline QString text(bool value)
{
    return value ? "true" : "false";
}

// A settings store of the host as a plain INI file, root 0 by default.
inline QSettings raw(KHKSoftwareSettings::HKEY root = KHKSoftwareSettings::CurrentUser)
{
    return QSettings(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat);
}

#endif // KCOMMTEST_H
