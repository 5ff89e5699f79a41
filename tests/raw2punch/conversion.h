// SPDX-License-Identifier: MIT
// Conversions in a folder of their own, and what the reader of tresk makes of the result.
#ifndef TRESK_TESTS_CONVERSION_H
#define TRESK_TESTS_CONVERSION_H

#include "raw2punch/converter.h"
#include "raw2punch/fault.h"
#include "read/records.h"
#include "read/tk_read.h"

#include "test_support.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class Conversion
{
  public:
    Conversion() : folder_(make_folder())
    {
        options.input = folder_ + "/in.raw";
        options.output = folder_ + "/out.pun";
    }
    Conversion(const Conversion &) = delete;
    Conversion &operator=(const Conversion &) = delete;
    ~Conversion()
    {
        std::filesystem::remove_all(folder_);
    }

    // Converts the bytes. Returns the message of the fault; empty if there was none.
    std::string run(const std::string &rawfile)
    {
        std::ofstream(options.input, std::ios::binary) << rawfile;
        report = Report();
        try {
            convert(options, report);
        } catch (const Fault &fault) {
            return fault.what();
        }
        return "";
    }

    std::string log(const std::string &text)
    {
        std::ofstream(folder_ + "/log", std::ios::binary) << text;
        return folder_ + "/log";
    }

    std::string output() const
    {
        return read_file(options.output);
    }

    // The records of the punch file.
    PF read() const
    {
        std::string path = options.output;
        PF file{};
        file.name = path.data();
        if (readfile(&file) != READ_GOOD) {
            throw std::runtime_error("tresk cannot read the file");
        }
        file.name = nullptr;
        return file;
    }

    // Files in the folder.
    std::size_t files() const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_), {}));
    }

    Options options;
    Report report;

  private:
    std::string folder_;
};

#endif
