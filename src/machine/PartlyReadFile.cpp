#include "machine/PartlyReadFile.h"

#include <algorithm>

#include "machine/FileBytes.h"

namespace bxvbwiz {
namespace {

// Small tables come with one call, and a call costs about as much as copying a piece.
constexpr std::size_t kPiece = 0x2000;

}  // namespace

SystemError PartlyReadFile::Open(const std::string& path) {
  size_ = 0;
  error_ = SystemError::Success;
  const SystemError error = file_.emplace().Open(path);
  if (error != SystemError::Success) return error;
  const std::uint64_t size = file_->Status().size;
  if (size >= kTooLarge) return SystemError::NotEnoughMemory;
  if (size > capacity_) {
    capacity_ = static_cast<std::size_t>(size);
    bytes_.reset(new char[capacity_]);  // make_unique would fill it with zeros
  }
  isRead_.assign(static_cast<std::size_t>((size + kPiece - 1) / kPiece), false);
  size_ = size;
  return SystemError::Success;
}

std::string_view PartlyReadFile::Part(std::uint64_t offset, std::size_t size) {
  if (offset >= size_ || size == 0) return {};
  const auto begin = static_cast<std::size_t>(offset);
  const std::size_t end = begin + std::min(size, static_cast<std::size_t>(size_) - begin);
  std::size_t piece = begin / kPiece;
  const std::size_t last = (end - 1) / kPiece + 1;
  while (piece < last) {
    std::size_t next = piece;
    while (next < last && !isRead_[next]) ++next;
    if (next > piece) ReadPieces(piece, next);
    piece = next + 1;
  }
  const std::string_view there(bytes_.get(), static_cast<std::size_t>(size_));
  return begin < there.size() ? there.substr(begin, end - begin) : std::string_view();
}

// Reads the pieces from `first` to before `last`; the file's size becomes smaller when they are not all
// there.
void PartlyReadFile::ReadPieces(std::size_t first, std::size_t last) {
  const std::size_t begin = first * kPiece;
  const std::size_t end = std::min(last * kPiece, static_cast<std::size_t>(size_));
  if (begin >= end) return;
  std::size_t count = 0;
  const SystemError error = file_->ReadAt(begin, bytes_.get() + begin, end - begin, count);
  if (error_ == SystemError::Success) error_ = error;
  if (begin + count < end) size_ = begin + count;
  for (std::size_t piece = first; piece < last; ++piece) isRead_[piece] = true;
}

}  // namespace bxvbwiz
