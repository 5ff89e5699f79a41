// SPDX-License-Identifier: MIT
// SQLite as far as the history needs it. Everything throws HistoryFault, with the path of the database in
// front.
#ifndef TRESK_REPORT_SQLITE_H
#define TRESK_REPORT_SQLITE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace report
{

// A database that is open.
class Sqlite
{
  public:
    // A database in memory.
    Sqlite();
    // One in a file that is there. It comes from anywhere: nothing in it may run code of its own. Until
    // trust() nothing is written to it, not even what a process that was killed has left beside it; until
    // allow_writing() nothing else.
    explicit Sqlite(const std::string &path);
    ~Sqlite();
    Sqlite(const Sqlite &) = delete;
    Sqlite &operator=(const Sqlite &) = delete;

    void trust();
    void allow_writing();

    // Runs statements without results.
    void run(const char *sql);

    // The bytes of the database as a file.
    std::string image() const;

    [[noreturn]] void fail(const std::string &why) const;
    // The same with SQLite's words for a result code.
    [[noreturn]] void fail_with(int code) const;

    sqlite3 *handle() const
    {
        return handle_;
    }

  private:
    void open(const char *path, int flags);
    void set(int what, bool on);

    std::string path_;
    sqlite3 *handle_ = nullptr;
};

// A statement, which may be run again and again.
class Query
{
  public:
    Query(const Sqlite &database, std::string_view sql);
    ~Query();
    Query(const Query &) = delete;
    Query &operator=(const Query &) = delete;

    // Starts it, with the values of its parameters in their order.
    template <typename... Values> Query &with(const Values &...values)
    {
        reset();
        (bind(values), ...);
        return *this;
    }

    // Goes to the next row. False behind the last one.
    bool next();

    // Goes through all rows without looking at them.
    void finish();

    // The columns of the row, from 0. An error that is no number is kept as a text, since SQLite has no NaN.
    std::int64_t integer(int column) const;
    std::optional<std::int64_t> maybe_integer(int column) const;
    std::optional<double> maybe_real(int column) const;
    std::string text(int column) const;

  private:
    void reset();
    void bind(std::int64_t value);
    void bind(const std::optional<std::int64_t> &value);
    void bind(const std::optional<double> &value);
    void bind(const std::string &value);
    void check(int code) const;

    const Sqlite &database_;
    sqlite3_stmt *handle_ = nullptr;
    int bound_ = 0;
};

// What is read while it lives is of one moment; what is written is undone at its end unless it is committed.
class Transaction
{
  public:
    // Begun by "BEGIN", or by "BEGIN IMMEDIATE" for writing, which waits for other writers.
    Transaction(Sqlite &database, const char *begin);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    void commit();

  private:
    Sqlite *database_;
};

} // namespace report

#endif
