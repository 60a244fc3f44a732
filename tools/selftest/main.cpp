// Developer's smoke check of the current-syntax round trip: reads a sample
// request, writes it back and says whether the text came out as it went in.
#include <iostream>
#include <memory>
#include <string>

#include <lytFilterParser/lytFilterParser.h>

namespace {

const char kFirstSample[] =
    " -filter [and [[interface  0 [[any inbound]]]]] -k src -k svc acc=replace -c wb acc=rate dir=in -c wb "
    "acc=rate dir=out -s bottom ";
const char kSecondSample[] =
    " -filter [and [[interface  0 [[any inbound]]]]] -k src -k svc -c wb acc=rate -c wb acc=rate -s bottom index=4";

}  // namespace

int main() {
  std::string sample = kFirstSample;
  sample = kSecondSample;  // the second sample is the one that runs

  std::cout << "Hello World!" << std::endl;

  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(sample, error));
  if (!request) {
    std::cerr << "lytFilterParser-selftest: no request read: " << error << std::endl;
    return 1;
  }
  const std::string out = request->dump();
  std::cout << sample << "\n";

  request.reset(LYTKovaRequest::getLYTKovaRequest(sample, error));
  if (!request) {
    std::cerr << "lytFilterParser-selftest: no request read: " << error << std::endl;
    return 1;
  }
  std::cout << (out == sample ? "out == in" : "out does not equal in \n");
  std::cout << out << std::flush;

  // Copy every column's parts and read every entity's names, as callers do.
  if (const NetworkKovaRequest* network = dynamic_cast<const NetworkKovaRequest*>(request.get())) {
    for (const TavColumnArray* columns : {&network->getKeys(), &network->getValues()}) {
      for (const TavColumn& column : *columns) {
        TavColumnFilter filter = column.getColumnFilter();
        TavEntityArray entities = column.getEntities();
        for (const TavEntity& entity : entities) {
          std::string name = entity.getName();
          std::string resolved = entity.getResolvedName();
          (void)name;
          (void)resolved;
        }
        (void)filter;
      }
    }
  }
  TavEntityArray fresh;
  fresh.add(TavEntity(std::string("1111")));
  return 0;
}
