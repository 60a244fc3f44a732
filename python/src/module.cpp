#include "binding.h"

PYBIND11_MODULE(_lytfilterparser, module) {
  module.doc() = "The lytFilterParser library; use it through the package lytfilterparser.";
  lfp_python::translateLibraryMessages();
  lfp_python::bindModel(module);
  lfp_python::bindRequests(module);
  lfp_python::bindVocabulary(module);
  lfp_python::bindDiagnostics(module);
}
