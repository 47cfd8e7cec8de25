#include "platform/files/small_file_ring.h"

#include <fcntl.h>
#include <liburing.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace vantrel {

namespace {

// Opening, the question whether it is a pipe, and reading.
constexpr unsigned kSteps = 3;
constexpr unsigned kEntries = 64;
static_assert(kEntries >= kSteps * SmallFile::kMost);
// The smallest page that the kernel knows.
constexpr std::size_t kLeastPage = 4'096;
constexpr std::align_val_t kAlignment{kLeastPage};
// What is answered with this belongs to no reading.
constexpr std::uint64_t kNoFile = ~std::uint64_t{0};

// A queue that has room for all that is asked for at a time.
io_uring_sqe& NextEntry(io_uring& ring) {
    return *io_uring_get_sqe(&ring);
}

// The files have no descriptors, but places in a table of the queue's own.
void AskForFile(io_uring& ring, const SmallFile& file, unsigned place, char* bytes) {
    io_uring_sqe& open = NextEntry(ring);
    io_uring_prep_openat_direct(&open, file.folder, file.path, file.flags & ~O_CLOEXEC, 0, place);
    open.flags |= IOSQE_IO_LINK;
    io_uring_sqe_set_data64(&open, kNoFile);
    // A pipe that took the name of a file since is refused by this, and so not read from: unlike pread, the
    // reading here would take what is in it. The access that is told of is the usual one, so that nothing
    // changes for a file.
    io_uring_sqe& advise = NextEntry(ring);
    io_uring_prep_fadvise(&advise, static_cast<int>(place), 0, 0, POSIX_FADV_NORMAL);
    advise.flags |= IOSQE_FIXED_FILE | IOSQE_IO_LINK;
    io_uring_sqe_set_data64(&advise, kNoFile);
    io_uring_sqe& read = NextEntry(ring);
    io_uring_prep_read(&read, static_cast<int>(place), bytes, SmallFile::kBytes, 0);
    read.flags |= IOSQE_FIXED_FILE;
    io_uring_sqe_set_data64(&read, place);
}

}  // namespace

void SmallFileRing::Release::operator()(char* bytes) const {
    ::operator delete(bytes, kAlignment);
}

SmallFileRing* SmallFileRing::OfThisThread() {
    static thread_local SmallFileRing ring;
    return ring.ring_ ? &ring : nullptr;
}

SmallFileRing::SmallFileRing() {
    try {
        bytes_.reset(static_cast<char*>(::operator new(SmallFile::kMost* SmallFile::kBytes, kAlignment)));
        ring_ = std::make_unique<io_uring>();
    } catch (const std::bad_alloc&) {
        return;
    }
    if (!Begin()) ring_.reset();
}

bool SmallFileRing::Begin() {
    constexpr unsigned kOneThread = IORING_SETUP_SINGLE_ISSUER | IORING_SETUP_DEFER_TASKRUN;
    if (io_uring_queue_init(kEntries, ring_.get(), kOneThread) != 0) return false;
    if (io_uring_register_files_sparse(ring_.get(), SmallFile::kMost) == 0) return true;
    io_uring_queue_exit(ring_.get());
    return false;
}

SmallFileRing::~SmallFileRing() {
    if (ring_) io_uring_queue_exit(ring_.get());
}

// After an error that tells nothing about what was asked for, which may still be worked on: the memory that
// it is read into stays for good.
void SmallFileRing::GiveUp() {
    io_uring_queue_exit(ring_.get());
    ring_.reset();
    static_cast<void>(bytes_.release());
}

// Asks for what was prepared, and waits for all of these answers. A file's goes to its place.
bool SmallFileRing::Await(unsigned count, Answers& answers) {
    for (unsigned submitted = 0; submitted < count;) {
        const int result = io_uring_submit_and_wait(ring_.get(), count - submitted);
        if (result == -EINTR) continue;
        if (result <= 0) return false;
        submitted += static_cast<unsigned>(result);
    }
    for (unsigned answered = 0; answered < count;) {
        io_uring_cqe* answer = nullptr;
        const int result = io_uring_wait_cqe(ring_.get(), &answer);
        if (result == -EINTR) continue;
        if (result < 0) return false;
        const std::uint64_t place = io_uring_cqe_get_data64(answer);
        if (place < answers.size()) answers[place] = answer->res;
        io_uring_cqe_seen(ring_.get(), answer);
        ++answered;
    }
    return true;
}

bool SmallFileRing::Read(SmallFile* files, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        AskForFile(*ring_, files[i], static_cast<unsigned>(i), bytes_.get() + i * SmallFile::kBytes);
    Answers sizes{};
    if (!Await(static_cast<unsigned>(count) * kSteps, sizes) || !CheckEnds(sizes, count) ||
        !CloseAll(count)) {
        GiveUp();
        return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const bool isRead = sizes[i] > 0 && static_cast<std::size_t>(sizes[i]) < SmallFile::kBytes;
        files[i].bytes = isRead ? bytes_.get() + i * SmallFile::kBytes : nullptr;
        files[i].size = isRead ? static_cast<std::size_t>(sizes[i]) : 0;
    }
    return true;
}

// Beyond its first page a reading may have ended in front of an error. At the end of a file there is nothing
// more to read, and no error; the size of any other becomes 0.
bool SmallFileRing::CheckEnds(Answers& sizes, std::size_t count) {
    Answers more{};
    unsigned asked = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto size = static_cast<std::size_t>(std::max(sizes[i], 0));
        if (size < kLeastPage || size >= SmallFile::kBytes) continue;
        io_uring_sqe& read = NextEntry(*ring_);
        io_uring_prep_read(&read, static_cast<int>(i), bytes_.get() + i * SmallFile::kBytes + size, 1, size);
        read.flags |= IOSQE_FIXED_FILE;
        io_uring_sqe_set_data64(&read, i);
        ++asked;
    }
    if (!Await(asked, more)) return false;
    for (std::size_t i = 0; i < count; ++i)
        if (more[i] != 0) sizes[i] = 0;
    return true;
}

bool SmallFileRing::CloseAll(std::size_t count) {
    std::array<int, SmallFile::kMost> none;
    none.fill(-1);
    const int result =
        io_uring_register_files_update(ring_.get(), 0, none.data(), static_cast<unsigned>(count));
    return result == static_cast<int>(count);
}

}  // namespace vantrel
