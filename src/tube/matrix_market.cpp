#include "tube/matrix_market.hpp"

#include <charconv>
#include <stdexcept>

#include "core/output_file.hpp"

namespace vkm {

namespace {

/// The text of one file, number by number.
class NumberFile {
 public:
  NumberFile(const std::string& path, const char* open_failure, const Poll& poll) : path_(path), file_(path, poll) {
    if (!file_.is_open()) throw std::runtime_error(open_failure + path);
  }

  NumberFile& operator<<(const char* text) {
    file_.write(text);
    return *this;
  }
  NumberFile& operator<<(std::uint64_t number) {
    char digits[24];
    file_.write({digits, std::to_chars(digits, digits + sizeof digits, number).ptr});
    return *this;
  }
  NumberFile& operator<<(double number) {
    char digits[32];
    file_.write({digits, std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 17).ptr});
    return *this;
  }

  void commit() { commit_or_throw(file_, path_); }

 private:
  std::string path_;
  OutputFile file_;
};

}  // namespace

void write_sparse_matrix_market(const SparseRigidityMatrix& sparse, const std::string& path, bool one_based_indices,
                                const Poll& poll) {
  NumberFile file(path, "could not open Matrix Market output path: ", poll);
  const std::uint64_t first = one_based_indices ? 1 : 0;
  file << "%%MatrixMarket matrix coordinate real general\n"
       << "% VKMcore resolved-tube sparse rigidity matrix A, rows=3N, columns=struts+kinks\n"
       << sparse.row_count << " " << sparse.column_count << " " << sparse.nonzero_count << "\n";
  for (std::size_t column = 0; column < sparse.columns.size(); ++column) {
    for (const SparseEntry& entry : sparse.columns[column].entries) {
      file << entry.row + first << " " << column + first << " " << entry.value << "\n";
    }
  }
  file.commit();
}

void write_vector_market(std::span<const double> vector, const std::string& path, const Poll& poll) {
  NumberFile file(path, "could not open vector Matrix Market output path: ", poll);
  file << "%%MatrixMarket matrix array real general\n"
       << "% VKMcore resolved-tube dense vector\n"
       << std::uint64_t{vector.size()} << " 1\n";
  for (const double value : vector) file << value << "\n";
  file.commit();
}

void write_vector_csv(std::span<const double> vector, const std::string& path, const Poll& poll) {
  NumberFile file(path, "could not open vector CSV output path: ", poll);
  file << "row,value\n";
  for (std::size_t row = 0; row < vector.size(); ++row) file << std::uint64_t{row} << "," << vector[row] << "\n";
  file.commit();
}

}  // namespace vkm
