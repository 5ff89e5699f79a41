// SPDX-License-Identifier: MIT
// The folder of a report. Files are written beside their names and renamed, the summary last: a folder
// without summary.tsv holds no finished report. While one is made, summary.tsv.new marks the folder as ours.
#ifndef TRESK_REPORT_OUTPUT_FOLDER_H
#define TRESK_REPORT_OUTPUT_FOLDER_H

#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>

namespace report
{

constexpr const char *kTranscriptFile = "transcript.txt";
constexpr const char *kJsonFile = "result.json";
constexpr const char *kCsvFile = "findings.csv";
constexpr const char *kPageFile = "report.html";
constexpr const char *kSummaryFile = "summary.tsv";

// Something that is no report is in the way. Nothing of it was touched.
struct FolderRefused : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A report cannot be written.
struct WriteFault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class OutputFolder
{
  public:
    // Makes the folder and those above it, or takes over one that is empty or holds a report, finished or
    // not. Waits for another process that is writing there. Throws FolderRefused or WriteFault.
    explicit OutputFolder(std::string path);
    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;
    ~OutputFolder();

    // Path of a file of the report, and that which it has before commit().
    std::string path_of(const std::string &name) const;
    std::string new_path_of(const std::string &name) const;

    // Makes a file of the report beside its name. Returns its descriptor. Throws WriteFault.
    int create(const std::string &name) const;

    // Writes a file of the report beside its name. Throws WriteFault.
    void write(const std::string &name, const std::function<void(std::ostream &)> &content) const;

    // Gives all files that were written their names; the others of an older report are removed. Throws
    // WriteFault.
    void commit() const;

    // Removes all files of the report, of an older one too, since that is not what this run found. What was
    // made of the folder itself is removed as well.
    void abandon() const;

  private:
    void make();
    void make_one(const std::string &path);
    void lock();
    void refuse_strangers() const;
    void mark() const;

    std::string path_;
    int fd_ = -1; // of the folder, which is locked by it
    bool is_made_ = false;
};

} // namespace report

#endif
