// SPDX-License-Identifier: MIT
#include "report/handover.h"

#include <new>
#include <stdexcept>
#include <sys/mman.h>

namespace report
{

namespace
{

void put_file(const InputFile &file, Handover::File &to)
{
    to = {file.was_read, file.read_result, file.format};
}

void take_file(const Handover::File &from, InputFile &file)
{
    file.was_read = from.was_read;
    file.read_result = from.read_result;
    file.format = from.format;
}

} // namespace

SharedHandover::SharedHandover()
{
    void *memory = mmap(nullptr, sizeof(Handover), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::runtime_error("out of memory");
    }
    handover_ = new (memory) Handover{};
}

SharedHandover::~SharedHandover()
{
    munmap(handover_, sizeof(Handover));
}

void put_progress(const Result &result, Handover &handover)
{
    put_file(result.golden, handover.files[0]);
    put_file(result.regression, handover.files[1]);
    handover.abstol = result.options.abstol;
    handover.reltol = result.options.reltol;
    copy_text(handover.mode, result.options.mode);
    handover.desert = result.options.desert;
    handover.pem = result.options.pem;
    handover.nem = result.options.nem;
    handover.counts = result.counts;
    handover.grade = result.grade;
    handover.has_grade = result.grade != kNoGrade;
}

Result result_of_progress(const Handover &handover)
{
    Result result;
    take_file(handover.files[0], result.golden);
    take_file(handover.files[1], result.regression);
    result.options.abstol = handover.abstol;
    result.options.reltol = handover.reltol;
    result.options.mode = handover.mode;
    result.options.desert = handover.desert;
    result.options.pem = handover.pem;
    result.options.nem = handover.nem;
    result.counts = handover.counts;
    return result;
}

void take_digests(const Handover &handover, Result &result)
{
    result.golden.sha256 = handover.digests[0].sha256;
    result.golden.bytes = handover.digests[0].bytes;
    result.regression.sha256 = handover.digests[1].sha256;
    result.regression.bytes = handover.digests[1].bytes;
}

} // namespace report
