// The JSON type of lytreq's reports.
#ifndef LYTREQ_JSON_H
#define LYTREQ_JSON_H

#include <nlohmann/json.hpp>

namespace lytreq {

// JSON objects keep their fields in the order they are written.
typedef nlohmann::ordered_json Json;

}  // namespace lytreq

#endif
