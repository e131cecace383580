#include "tube/matrix_market.hpp"

#include <charconv>
#include <fstream>
#include <stdexcept>

namespace vkm {

namespace {

/// Text of one file, gathered in pieces of some tens of kilobytes.
class TextFile {
 public:
  TextFile(const std::string& path, const char* failure)
      : stream_(path.find('\0') == std::string::npos ? std::ofstream(path, std::ios::binary | std::ios::trunc)
                                                     : std::ofstream()) {
    if (!stream_.is_open()) throw std::runtime_error(failure + path);
  }
  ~TextFile() { flush(); }
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;

  TextFile& operator<<(const char* text) {
    text_ += text;
    return *this;
  }
  TextFile& operator<<(std::uint64_t number) {
    char digits[24];
    text_.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
    return spill();
  }
  TextFile& operator<<(double number) {
    char digits[32];
    text_.append(digits, std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 17).ptr);
    return spill();
  }

 private:
  TextFile& spill() {
    if (text_.size() > (1u << 16)) flush();
    return *this;
  }
  void flush() {
    stream_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
    text_.clear();
  }

  std::ofstream stream_;
  std::string text_;
};

}  // namespace

void write_sparse_matrix_market(const SparseRigidityMatrix& sparse, const std::string& path, bool one_based_indices) {
  TextFile file(path, "could not open Matrix Market output path: ");
  const std::uint64_t first = one_based_indices ? 1 : 0;
  file << "%%MatrixMarket matrix coordinate real general\n"
       << "% VKMcore resolved-tube sparse rigidity matrix A, rows=3N, columns=struts+kinks\n"
       << sparse.row_count << " " << sparse.column_count << " " << sparse.nonzero_count << "\n";
  for (std::size_t column = 0; column < sparse.columns.size(); ++column) {
    for (const SparseEntry& entry : sparse.columns[column].entries) {
      file << entry.row + first << " " << column + first << " " << entry.value << "\n";
    }
  }
}

void write_vector_market(std::span<const double> vector, const std::string& path) {
  TextFile file(path, "could not open vector Matrix Market output path: ");
  file << "%%MatrixMarket matrix array real general\n"
       << "% VKMcore resolved-tube dense vector\n"
       << std::uint64_t{vector.size()} << " 1\n";
  for (const double value : vector) file << value << "\n";
}

void write_vector_csv(std::span<const double> vector, const std::string& path) {
  TextFile file(path, "could not open vector CSV output path: ");
  file << "row,value\n";
  for (std::size_t row = 0; row < vector.size(); ++row) file << std::uint64_t{row} << "," << vector[row] << "\n";
}

}  // namespace vkm
