// SPDX-License-Identifier: MIT
#include "report/sqlite.h"

#include "report/history.h"
#include "report/text.h"

#include <cmath>
#include <limits>
#include <memory>
#include <sqlite3.h>

namespace report
{

namespace
{

constexpr int kPatience = 120000; // milliseconds for another process to end its writing

} // namespace

Sqlite::Sqlite() : path_("a database in memory")
{
    open(":memory:", SQLITE_OPEN_READWRITE);
}

Sqlite::Sqlite(const std::string &path) : path_(path)
{
    // Before names as ":memory:", which are no files for SQLite, stands a folder.
    open((path[0] == '/' ? path : "./" + path).c_str(), SQLITE_OPEN_READWRITE);
    set(SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, true);
    set(SQLITE_DBCONFIG_DEFENSIVE, true);
    set(SQLITE_DBCONFIG_TRUSTED_SCHEMA, false);
    set(SQLITE_DBCONFIG_ENABLE_TRIGGER, false);
    run("PRAGMA query_only = 1; PRAGMA cell_size_check = 1");
}

Sqlite::~Sqlite()
{
    sqlite3_close(handle_);
}

void Sqlite::open(const char *path, int flags)
{
    const int code = sqlite3_open_v2(path, &handle_, flags, nullptr);
    if (code == SQLITE_OK) {
        sqlite3_busy_timeout(handle_, kPatience);
        return;
    }
    const std::string why = sqlite3_errstr(code);
    sqlite3_close(handle_);
    fail(why);
}

void Sqlite::set(int what, bool on)
{
    sqlite3_db_config(handle_, what, on ? 1 : 0, nullptr);
}

void Sqlite::trust()
{
    set(SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, false);
}

void Sqlite::allow_writing()
{
    run("PRAGMA query_only = 0; PRAGMA synchronous = FULL");
}

void Sqlite::run(const char *sql)
{
    const int code = sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        fail_with(code);
    }
}

std::string Sqlite::image() const
{
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, void (*)(void *)> bytes(sqlite3_serialize(handle_, "main", &size, 0),
                                                                 sqlite3_free);
    if (bytes == nullptr) {
        fail_with(SQLITE_NOMEM);
    }
    return {reinterpret_cast<const char *>(bytes.get()), static_cast<std::size_t>(size)};
}

void Sqlite::fail(const std::string &why) const
{
    throw HistoryFault(terminal_line(path_) + ": " + terminal_line(why));
}

void Sqlite::fail_with(int code) const
{
    const int kind = code & 0xFF;
    const bool is_damage = kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB;
    fail(std::string(is_damage ? "the history is damaged: " : "") + sqlite3_errmsg(handle_));
}

Query::Query(const Sqlite &database, std::string_view sql) : database_(database)
{
    check(sqlite3_prepare_v2(database.handle(), sql.data(), static_cast<int>(sql.size()), &handle_, nullptr));
}

Query::~Query()
{
    sqlite3_finalize(handle_);
}

void Query::check(int code) const
{
    if (code != SQLITE_OK) {
        database_.fail_with(code);
    }
}

bool Query::next()
{
    const int code = sqlite3_step(handle_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        database_.fail_with(code);
    }
    return code == SQLITE_ROW;
}

void Query::finish()
{
    while (next()) {
    }
}

void Query::reset()
{
    sqlite3_reset(handle_); // an error of the last run was thrown by next()
    bound_ = 0;
}

void Query::bind(std::int64_t value)
{
    check(sqlite3_bind_int64(handle_, ++bound_, value));
}

void Query::bind(const std::optional<std::int64_t> &value)
{
    if (value) {
        bind(*value);
    } else {
        check(sqlite3_bind_null(handle_, ++bound_));
    }
}

void Query::bind(const std::optional<double> &value)
{
    ++bound_;
    if (!value) {
        check(sqlite3_bind_null(handle_, bound_));
    } else if (std::isnan(*value)) {
        check(sqlite3_bind_text(handle_, bound_, "nan", 3, SQLITE_STATIC));
    } else {
        check(sqlite3_bind_double(handle_, bound_, *value));
    }
}

void Query::bind(const std::string &value)
{
    check(sqlite3_bind_text64(handle_, ++bound_, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

std::int64_t Query::integer(int column) const
{
    return sqlite3_column_int64(handle_, column);
}

std::optional<std::int64_t> Query::maybe_integer(int column) const
{
    const bool is_there = sqlite3_column_type(handle_, column) != SQLITE_NULL;
    return is_there ? std::optional(integer(column)) : std::nullopt;
}

std::optional<double> Query::maybe_real(int column) const
{
    switch (sqlite3_column_type(handle_, column)) {
    case SQLITE_NULL:
        return std::nullopt;
    case SQLITE_TEXT:
        return std::numeric_limits<double>::quiet_NaN();
    default:
        return sqlite3_column_double(handle_, column);
    }
}

std::string Query::text(int column) const
{
    const void *bytes = sqlite3_column_blob(handle_, column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(handle_, column));
    return bytes == nullptr ? std::string() : std::string(static_cast<const char *>(bytes), size);
}

Transaction::Transaction(Sqlite &database, const char *begin) : database_(&database)
{
    database.run(begin);
}

Transaction::~Transaction()
{
    if (database_ != nullptr) {
        sqlite3_exec(database_->handle(), "ROLLBACK", nullptr, nullptr,
                     nullptr); // done already after some errors
    }
}

void Transaction::commit()
{
    database_->run("COMMIT");
    database_ = nullptr;
}

} // namespace report
