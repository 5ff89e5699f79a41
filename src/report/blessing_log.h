// SPDX-License-Identifier: MIT
// The record of blessings in a golden tree, blessings.tsv, a line for each. It cannot be written in the same
// instant as the golden file, so a note of what is about to be done, blessings.pending, goes before both: a
// blessing that was killed in between is put on record by the next one.
#ifndef TRESK_REPORT_BLESSING_LOG_H
#define TRESK_REPORT_BLESSING_LOG_H

#include <string>
#include <vector>

namespace report
{

// A field between tabs that can be read back: "\t", "\n", "\\", and "\x1b" of other control characters.
std::string log_field(const std::string &bytes);

class BlessingLog
{
  public:
    // Opens the record and waits until no other process is blessing in this tree. Throws std::runtime_error.
    explicit BlessingLog(const std::string &golden_tree);
    BlessingLog(const BlessingLog &) = delete;
    BlessingLog &operator=(const BlessingLog &) = delete;
    ~BlessingLog();

    // Puts a blessing on record that was killed when its golden file was in place, or forgets one that was
    // killed before. Returns what is to be said of it; nothing where there is none.
    std::string finish_interrupted();

    // Notes what is about to be done to a file of the tree, whose contents will have the digest.
    void announce(const std::string &name, const std::string &new_digest,
                  const std::vector<std::string> &fields);

    // Puts what was announced on record.
    void record();

    // Forgets it, since it was not done.
    void withdraw();

  private:
    void append(const std::string &line);

    std::string tree_;
    std::string pending_; // path of the note
    std::string line_;    // that was announced
    int fd_ = -1;
};

} // namespace report

#endif
