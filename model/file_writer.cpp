#include "model/file_writer.h"

#include "model/paths.h"
#include "model/runtime_error.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <ostream>
#include <random>
#include <streambuf>
#include <sys/stat.h>
#include <system_error>
#include <vector>

#ifdef _WIN32
#include <io.h>
#include <share.h>
#else
#include <unistd.h>
#endif

namespace velmora {

namespace {

namespace fs = std::filesystem;

// The few descriptor operations the replacement needs; -1 and errno on failure.
#ifdef _WIN32
int CreateNewFile(const fs::path& path) {
    int fd = -1;
    const int flags = _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT;
    return _wsopen_s(&fd, path.c_str(), flags, _SH_DENYNO, _S_IREAD | _S_IWRITE) == 0 ? fd : -1;
}
long long WriteSome(int fd, const char* data, std::size_t size) {
    constexpr std::size_t kMost = 1u << 30;
    return _write(fd, data, static_cast<unsigned>(size < kMost ? size : kMost));
}
int SyncFile(int fd) {
    return _commit(fd);
}
int CloseFile(int fd) {
    return _close(fd);
}
int OpenExisting(const fs::path& path) {
    int fd = -1;
    const int flags = _O_WRONLY | _O_BINARY | _O_NOINHERIT;
    return _wsopen_s(&fd, path.c_str(), flags, _SH_DENYNO, 0) == 0 ? fd : -1;
}
void CopyPermissions(int, const fs::path&) {}
#else
int CreateNewFile(const fs::path& path) {
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}
long long WriteSome(int fd, const char* data, std::size_t size) {
    return ::write(fd, data, size);
}
int SyncFile(int fd) {
    return ::fsync(fd);
}
int CloseFile(int fd) {
    return ::close(fd);
}
// Opens an existing file for writing without changing it, to learn whether it may be written.
int OpenExisting(const fs::path& path) {
    return ::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
}
// The new file takes the permission bits of the one it replaces; failing that, it keeps the
// ones it was created with.
void CopyPermissions(int fd, const fs::path& target) {
    struct stat status {};
    if (::stat(target.c_str(), &status) == 0) {
        (void)::fchmod(fd, status.st_mode & 07777);
    }
}
#endif

// An output buffer over a descriptor that takes at most `capacity` bytes and then fails with
// ENOSPC, as a full disk does. It keeps the system error of its first failure; after it,
// every write fails.
class FileBuffer : public std::streambuf {
public:
    FileBuffer(int fd, std::uintmax_t capacity) : fd_(fd), capacity_(capacity), buffer_(kSize) {
        setp(buffer_.data(), buffer_.data() + buffer_.size());
    }

    int Error() const { return error_; }

protected:
    int_type overflow(int_type c) override {
        if (!Drain()) {
            return traits_type::eof();
        }
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            *pptr() = traits_type::to_char_type(c);
            pbump(1);
        }
        return traits_type::not_eof(c);
    }

    std::streamsize xsputn(const char* data, std::streamsize count) override {
        const auto size = static_cast<std::size_t>(count);
        if (size <= static_cast<std::size_t>(epptr() - pptr())) {
            std::memcpy(pptr(), data, size);
            pbump(static_cast<int>(size));
            return count;
        }
        // Large pieces (the records, the export's blocks) go straight to the file.
        if (!Drain() || !WriteAll(data, size)) {
            return 0;
        }
        return count;
    }

    int sync() override { return Drain() ? 0 : -1; }

private:
    static constexpr std::size_t kSize = 8 * 1024;

    bool Drain() {
        const auto pending = static_cast<std::size_t>(pptr() - pbase());
        setp(buffer_.data(), buffer_.data() + buffer_.size());
        return pending == 0 || WriteAll(buffer_.data(), pending);
    }

    bool WriteAll(const char* data, std::size_t size) {
        if (error_ != 0) {
            return false;
        }
        const std::uintmax_t room = capacity_ - written_;
        std::size_t left = size > room ? static_cast<std::size_t>(room) : size;
        while (left > 0) {
            const long long done = WriteSome(fd_, data, left);
            if (done < 0 && errno == EINTR) {
                continue;
            }
            if (done <= 0) {
                error_ = done < 0 && errno != 0 ? errno : EIO;
                return false;
            }
            data += done;
            left -= static_cast<std::size_t>(done);
            written_ += static_cast<std::uintmax_t>(done);
        }
        if (size > room) {
            error_ = ENOSPC;
            return false;
        }
        return true;
    }

    int fd_;
    std::uintmax_t capacity_;
    std::uintmax_t written_ = 0;
    int error_ = 0;
    std::vector<char> buffer_;
};

// "(reason)" after what, when the system gave one.
std::string WithSystemReason(std::string what, int error) {
    if (error != 0) {
        what += " (";
        what += std::strerror(error);
        what += ")";
    }
    return what;
}

// Six characters that make the new file's name unlikely to be taken.
std::string RandomSuffix(std::mt19937& random) {
    static constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::uniform_int_distribution<std::size_t> pick(0, sizeof kLetters - 2);
    std::string suffix;
    for (int i = 0; i < 6; ++i) {
        suffix += kLetters[pick(random)];
    }
    return suffix;
}

// The new file beside the target, removed again unless Keep is called.
class NewFile {
public:
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    // Creates "<target>.tmp-XXXXXX"; -1 in Descriptor() and errno set when it cannot.
    explicit NewFile(const fs::path& target) {
        std::mt19937 random(std::random_device{}());
        for (int attempt = 0; attempt < 100; ++attempt) {
            path_ = target;
            path_ += ".tmp-" + RandomSuffix(random);
            fd_ = CreateNewFile(path_);
            if (fd_ >= 0 || errno != EEXIST) {
                return;
            }
        }
    }

    ~NewFile() {
        if (fd_ >= 0) {
            CloseFile(fd_);
        }
        if (!kept_) {
            std::error_code ignored;
            fs::remove(path_, ignored);
        }
    }

    int Descriptor() const { return fd_; }
    const fs::path& Path() const { return path_; }

    // Closes the descriptor; false and errno set when closing reports an error.
    bool Close() {
        const int fd = fd_;
        fd_ = -1;
        return CloseFile(fd) == 0;
    }
    void Keep() { kept_ = true; }

private:
    fs::path path_;
    int fd_ = -1;
    bool kept_ = false;
};

// A link at path is followed to the file it names, so that the link stays a link.
fs::path ResolveTarget(const std::string& path) {
    fs::path target = ToFsPath(path);
    std::error_code error;
    if (fs::is_symlink(target, error)) {
        fs::path resolved = fs::canonical(target, error);
        if (!error) {
            return resolved;
        }
    }
    return target;
}

} // namespace

FileWriter FileWriter::FullAfter(std::uintmax_t bytes) {
    FileWriter writer;
    writer.capacity_ = bytes;
    return writer;
}

void FileWriter::Replace(const std::string& path,
                         const std::function<void(std::ostream&)>& fill) const {
    const fs::path target = ResolveTarget(path);
    std::error_code error;
    const bool existed = fs::exists(target, error);
    const auto fail = [&](ErrorCode code, const std::string& reason) {
        throw RuntimeError(code, path + ": " + reason +
                                     (existed ? ": il file precedente non è stato modificato"
                                              : ": il file non è stato creato"));
    };

    // A file that may not be written is not replaced either: the rename alone would allow it.
    if (fs::is_regular_file(target, error)) {
        const int existing = OpenExisting(target);
        if (existing < 0) {
            fail(ErrorCode::PathFileAccess,
                 WithSystemReason("il file non può essere scritto", errno));
        }
        CloseFile(existing);
    }
    NewFile file(target);
    if (file.Descriptor() < 0) {
        fail(ErrorCode::PathFileAccess,
             WithSystemReason("impossibile creare il file nuovo", errno));
    }
    if (existed) {
        CopyPermissions(file.Descriptor(), target);
    }
    FileBuffer buffer(file.Descriptor(), capacity_);
    std::ostream out(&buffer);
    try {
        fill(out);
    } catch (const RuntimeError& failure) {
        fail(failure.Code(), WithSystemReason(failure.Detail(), buffer.Error()));
    }
    out.flush();
    if (!out) {
        fail(ErrorCode::PathFileAccess,
             WithSystemReason("scrittura del file non riuscita", buffer.Error()));
    }
    // A file system that cannot sync a file (EINVAL, ENOTSUP) still gets the file.
    if (SyncFile(file.Descriptor()) != 0 && errno != EINVAL && errno != ENOTSUP) {
        fail(ErrorCode::PathFileAccess,
             WithSystemReason("scrittura su disco non riuscita", errno));
    }
    if (!file.Close()) {
        fail(ErrorCode::PathFileAccess, WithSystemReason("chiusura del file non riuscita", errno));
    }
    fs::rename(file.Path(), target, error);
    if (error) {
        fail(ErrorCode::PathFileAccess,
             "sostituzione del file non riuscita (" + error.message() + ")");
    }
    file.Keep();
}

} // namespace velmora
