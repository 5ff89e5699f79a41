// SPDX-License-Identifier: MIT
#include "report/workers.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <memory>
#include <new>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace report
{

namespace
{

constexpr long kMostWorkers = 64;

// How far all of them are.
struct Counters {
    std::atomic<std::size_t> next;
    std::atomic<std::size_t> done;
};

class SharedCounters
{
  public:
    SharedCounters()
    {
        void *memory =
            mmap(nullptr, sizeof(Counters), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) {
            throw std::bad_alloc();
        }
        counters_ = new (memory) Counters{};
    }
    SharedCounters(const SharedCounters &) = delete;
    SharedCounters &operator=(const SharedCounters &) = delete;
    ~SharedCounters()
    {
        munmap(counters_, sizeof(Counters));
    }
    Counters *operator->() const
    {
        return counters_;
    }

  private:
    Counters *counters_;
};

struct CloseFile {
    void operator()(std::FILE *file) const
    {
        std::fclose(file);
    }
};

struct Worker {
    std::unique_ptr<std::FILE, CloseFile> answers; // number, size and bytes of each
    pid_t process = -1;
};

struct AnswerHead {
    std::size_t number;
    std::size_t size;
};

[[noreturn]] void work_and_end(std::size_t count, const std::function<std::string(std::size_t)> &work,
                               const SharedCounters &counters, std::FILE *answers)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    bool is_kept = true;
    for (std::size_t number = counters->next++; number < count && is_kept; number = counters->next++) {
        std::string answer;
        try {
            answer = work(number);
        } catch (const std::exception &) {
            answer.clear();
        }
        const AnswerHead head = {number, answer.size()};
        is_kept = std::fwrite(&head, sizeof head, 1, answers) == 1 &&
                  std::fwrite(answer.data(), 1, answer.size(), answers) == answer.size() &&
                  std::fflush(answers) == 0;
        ++counters->done;
    }
    _exit(is_kept ? 0 : 1);
}

void read_answers(std::FILE *from, std::vector<std::string> &answers)
{
    std::rewind(from);
    AnswerHead head = {};
    while (std::fread(&head, sizeof head, 1, from) == 1 && head.number < answers.size()) {
        std::string answer(head.size, '\0');
        if (std::fread(answer.data(), 1, answer.size(), from) == answer.size()) {
            answers[head.number] = std::move(answer);
        }
    }
}

// Forks a worker. False where the system has no room for one more.
bool start_worker(std::vector<Worker> &workers, std::size_t count,
                  const std::function<std::string(std::size_t)> &work, const SharedCounters &counters)
{
    Worker worker;
    worker.answers.reset(std::tmpfile());
    if (!worker.answers) {
        return false;
    }
    worker.process = fork();
    if (worker.process == 0) {
        work_and_end(count, work, counters, worker.answers.get());
    }
    if (worker.process < 0) {
        return false;
    }
    workers.push_back(std::move(worker));
    return true;
}

} // namespace

std::vector<std::string> share_out(std::size_t count, const std::function<std::string(std::size_t)> &work,
                                   Progress &progress)
{
    const SharedCounters counters;
    const long processors = std::clamp(sysconf(_SC_NPROCESSORS_ONLN), 1L, kMostWorkers);
    const std::size_t wanted = std::min(count, static_cast<std::size_t>(processors));
    std::vector<Worker> workers;
    std::fflush(nullptr);
    while (workers.size() < wanted && start_worker(workers, count, work, counters)) {
    }
    if (workers.empty() && count > 0) {
        throw std::runtime_error(std::string("cannot start a process: ") + std::strerror(errno));
    }
    std::vector<std::string> answers(count);
    for (const Worker &worker : workers) {
        int status = 0;
        for (pid_t ended = 0; ended == 0 || (ended < 0 && errno == EINTR);) {
            ended = waitpid(worker.process, &status, WNOHANG);
            if (ended == 0) {
                const std::timespec pause = {0, 20000000};
                nanosleep(&pause, nullptr);
                progress.show(counters->done);
            }
        }
        read_answers(worker.answers.get(), answers);
    }
    return answers;
}

} // namespace report
