// Responses as columns of numbers, for programs that draw or compute further.
#ifndef CLI_RESPONSE_TABLE_H
#define CLI_RESPONSE_TABLE_H

#include <string>
#include <vector>

#include "base/words.h"

namespace cli {

struct Column {
  std::string key;  /**< its name for programs: "level_db" */
  std::string head; /**< its name to read: "level (dB)" */
  std::vector<double> values;
};

struct Table {
  std::string title;       /**< the settings that made the filter */
  double samplerate = 0.0; /**< in Hz */
  std::vector<Column> columns;
};

/** @return its title, and its columns under their heads, numbers with 8 digits. */
std::string table_page(const Table &table);

/** @return a line of keys, and a line a row, numbers with the fewest digits that read back to the
 *          same doubles; -inf and nan as such. */
std::string table_csv(const Table &table);

/** @return {"veltane": version, "command": [...], "samplerate": number, key: [...], ...}; numbers
 *          have 17 significant digits, and those that are not finite are null. */
std::string table_json(const Table &table, const Words &command);

}  // namespace cli

#endif
