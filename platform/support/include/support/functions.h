// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SUPPORT_FUNCTIONS_H
#define CONNUI_SUPPORT_FUNCTIONS_H

#include <optional>
#include <type_traits>

#include <QLibrary>
#include <QString>

namespace Support {

/** One of the functions that a library is loaded for: its symbol, and where the pointer to it is kept. */
template <typename Functions, typename Function>
struct Symbol
{
    const char *name;
    Function Functions::*function;
};

/** Spelled out, since clang deduces an aggregate's template arguments only from its version 17 on. */
template <typename Functions, typename Function>
Symbol(const char *, Function Functions::*) -> Symbol<Functions, Function>;

/**
 * Loads a library that is not linked, and looks up functions of it and of the libraries that it brings along.
 * It stays loaded. Nothing, with a warning that begins with \a failure, when the library or one of the
 * functions is not there.
 */
template <typename Functions, typename... Function>
std::optional<Functions> loadFunctions(const QString &file, const char *failure,
                                       Symbol<Functions, Function>... symbols)
{
    QLibrary library(file);
    Functions functions;
    const auto resolve = [&library, &functions](const auto &symbol) {
        auto &function = functions.*symbol.function;
        function =
            reinterpret_cast<std::remove_reference_t<decltype(function)>>(library.resolve(symbol.name));
        return function != nullptr;
    };
    if ((resolve(symbols) && ...))
        return functions;
    qWarning("%s: %s", failure, qUtf8Printable(library.errorString()));
    return std::nullopt;
}

} // namespace Support

#endif
