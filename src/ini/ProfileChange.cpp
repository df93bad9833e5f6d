#include "ini/ProfileChange.h"

#include <cerrno>
#include <utility>

#include "files/AtomicFile.h"
#include "files/FileCalls.h"
#include "ini/ProfileCache.h"

namespace {

thread_local std::string lastError;

}   // namespace

const std::string& PrivateProfileError() {
    return lastError;
}

bool ProfileChange::Fail(std::string reason) {
    lastError = std::move(reason);
    return false;
}

ProfileChange::ProfileChange(std::string path, ProfileTransaction::Start start)
    : path_(std::move(path)),
      needsOld_(start == ProfileTransaction::Start::FromFile),
      stamp_(ReadProfileFile(path_, old_)),
      text_(needsOld_ ? old_ : std::string()) {}

bool ProfileChange::IsSaved(const std::string& contents, bool create) const {
    return stamp_.error == 0 ? contents == old_ : contents.empty() && !create;
}

bool ProfileChange::Commit(bool create) {
    if (needsOld_ && stamp_.error != 0 && stamp_.error != ENOENT) {
        return Fail("cannot read " + path_ + ": " + FileErrorText(stamp_.error));
    }
    std::string contents = text_.Contents();
    if (IsSaved(contents, create)) {
        return true;
    }
    if (std::string error = ReplaceFile(path_, contents, needsOld_ ? &stamp_ : nullptr); !error.empty()) {
        return Fail(std::move(error));
    }
    Profiles().Written(path_, stamp_, contents);
    stamp_ = FileStamp::Of(path_);
    old_ = std::move(contents);
    return true;
}
