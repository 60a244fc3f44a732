#include "corpus.h"

#include <cstdio>

namespace bench {
namespace {

// Typical operator requests: every option kind ("-f" atoms, "and"/"or"
// groups, "not", interface items, "-k" with entities and resolved names,
// "-v" with accumulation modes, sort words and column options, "-s" with
// index and updates), 10 to 30 tokens each.
const char* const kTypical[] = {
    "-f src 10.0.0.1 10.0.0.2 -f dst 192.168.1.10 -k svc -v wb acc=rate -s top index=1",
    "-f and [ -f src a b -f dst not c ] -k src -v wb acc=rate -s top",
    "-f or [ -f src 10.1.1.1 -f and [ -f dst 10.2.2.2 -f svc http https ] ] -k src -k dst -v pkt acc=sum -s bottom",
    "-f interface not eth0,in eth1,out eth2,both -k interface -v pkt acc=sum -v wb acc=rate -s top index=2",
    "-k src h1 h2 h3 -k svc http smtp dns -v wb dir=in enc=yes comp=no cprint=yes -v conn acc=concurrent -s top "
    "index=2 updates=20",
    "-f src 10.0.0.0/8 -k src h1<>host-one h2<>host-two -k connId 1 2 -v conn acc=new",
    "-f svc http https -f src not 10.9.9.9 -k url -v session acc=new url_mod=scheme_host sort=top",
    "-f tunnel t1 t2 -f ip 1.2.3.4 5.6.7.8 -k ip -v ab acc=lineUtil -v wb acc=sum -s bottom index=2",
    "-f svc NOT http -f fwrule r1 r2 -k fwrule -k svc -v wb acc=rate dir=out -v pkt acc=sum sort=bottom",
    "-f and [ -f src 10.0.0.1 -f or [ -f dst 10.0.0.2 -f dst 10.0.0.3 ] -f interface eth0,in ] -k qsrule "
    "-v wb acc=rate enc=no comp=yes -s top updates=100",
    "-k pktRange 64 128 256 512 1024 -v wb acc=sum -v pkt acc=sum -s top index=2 updates=30",
    "-k src -k dst -k svc -k qsrule -v wb -v ab -v pkt -v conn -v session -v wb",
};

const char* const kVirtualLink[] = {
    "vl branch-link -t application",
    "vl link-hq-to-dc2 -t wire",
    "vl backbone-01 -x 42 -t application -y z",
};

// Legacy command lines as older peers write them.
const char* const kLegacy[] = {
    "-g topsrc -y c src 1 [ 10.0.0.1 ]",
    "-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y b -g topsrc",
    "-filter [ and [[interface 0 [[eth0 in][eth1 out]]]]] -a i -y C -g topfw",
    "-g topqsrule -y C dst 0 [ a b ] svc 1 [ http ]",
    "-filter [ and [[src 0 [10.0.0.1 10.0.0.2 ]][dst 1 [10.1.0.1 ]][svc 0 [http https ]]]] -a a -y p -g topdst",
    "-a i -g topdst -y p",
    "-y b -g src h1 h2 h3",
};

// Typical requests and legacy lines spoilt at their first, a middle or their
// last token, each of the same length as the accepted text it stands beside:
// a refusal is measured against reading that text.
struct Spoilt {
  const char* name;
  const char* accepted;
  const char* refused;
};

const Spoilt kRefused[] = {
    {"typical_01_first", kTypical[0],
     "-q src 10.0.0.1 10.0.0.2 -f dst 192.168.1.10 -k svc -v wb acc=rate -s top index=1"},
    {"typical_01_middle", kTypical[0],
     "-f src 10.0.0.1 10.0.0.2 -f dst 192.168.1.10 -k svx -v wb acc=rate -s top index=1"},
    {"typical_01_last", kTypical[0],
     "-f src 10.0.0.1 10.0.0.2 -f dst 192.168.1.10 -k svc -v wb acc=rate -s top indax=1"},
    {"typical_04_first", kTypical[3],
     "-q interface not eth0,in eth1,out eth2,both -k interface -v pkt acc=sum -v wb acc=rate -s top index=2"},
    {"typical_04_middle", kTypical[3],
     "-f interface not eth0,in eth1,out eth2,both -k interface -v pkx acc=sum -v wb acc=rate -s top index=2"},
    {"typical_04_last", kTypical[3],
     "-f interface not eth0,in eth1,out eth2,both -k interface -v pkt acc=sum -v wb acc=rate -s top indax=2"},
    {"typical_10_first", kTypical[9],
     "-q and [ -f src 10.0.0.1 -f or [ -f dst 10.0.0.2 -f dst 10.0.0.3 ] -f interface eth0,in ] -k qsrule "
     "-v wb acc=rate enc=no comp=yes -s top updates=100"},
    {"typical_10_middle", kTypical[9],
     "-f and [ -f src 10.0.0.1 -f or [ -f dst 10.0.0.2 -f dsx 10.0.0.3 ] -f interface eth0,in ] -k qsrule "
     "-v wb acc=rate enc=no comp=yes -s top updates=100"},
    {"typical_10_last", kTypical[9],
     "-f and [ -f src 10.0.0.1 -f or [ -f dst 10.0.0.2 -f dst 10.0.0.3 ] -f interface eth0,in ] -k qsrule "
     "-v wb acc=rate enc=no comp=yes -s top updatez=100"},
};

const Spoilt kLegacyRefused[] = {
    {"legacy_01_middle", kLegacy[0], "-g topsrc -y x src 1 [ 10.0.0.1 ]"},
    {"legacy_04_first", kLegacy[3], "-g topqsrulx -y C dst 0 [ a b ] svc 1 [ http ]"},
    {"legacy_05_last", kLegacy[4],
     "-filter [ and [[src 0 [10.0.0.1 10.0.0.2 ]][dst 1 [10.1.0.1 ]][svc 0 [http https ]]]] -a a -y p -g topdsx"},
};

std::string address(long i) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "10.%ld.%ld.%ld", (i >> 16) & 255, (i >> 8) & 255, i & 255);
  return buffer;
}

std::string numbered(const char* prefix, long i) { return prefix + std::to_string(i); }

}  // namespace

const char* kindLabel(CaseKind kind) {
  switch (kind) {
    case CaseKind::Typical: return "typical";
    case CaseKind::VirtualLink: return "vl";
    case CaseKind::Legacy: return "legacy";
    case CaseKind::Large: return "large";
    case CaseKind::Deep: return "deep";
    case CaseKind::ScaleKeys: return "keys";
    case CaseKind::ScaleDepth: return "depth";
    case CaseKind::Refused: return "refused";
    case CaseKind::LegacyRefused: return "legacy refused";
  }
  return "?";
}

std::string keyColumnRequest(long count) {
  std::string text = "-k src";
  for (long i = 0; i < count; ++i) (text += ' ') += address(i);
  text += " -v wb acc=rate -s top";
  return text;
}

std::string largeRequest(long count) {
  std::string text = "-f src";
  for (long i = 0; i < count; ++i) (text += ' ') += numbered("host", i);
  text += " -k src";
  for (long i = 0; i < count; ++i) (text += ' ') += address(i);
  text += " -v wb acc=rate -s top";
  return text;
}

std::string nestedRequest(int levels) {
  // Level L is "-f OP [ -f src aL " + level L-1 + " ]", written outside in.
  std::string text;
  for (int level = levels; level >= 2; --level) {
    text += std::string("-f ") + (level % 2 == 0 ? "or" : "and") + " [ -f src " + numbered("a", level) + " ";
  }
  text += "-f and [ -f src a1 -f dst b1 ]";
  for (int level = levels; level >= 2; --level) text += " ]";
  return text + " -k svc -v wb";
}

std::string nestedUnbracketedRequest(int levels) {
  std::string text;
  for (int level = levels; level >= 2; --level) {
    text += std::string("-f ") + (level % 2 == 0 ? "or" : "and") + " -f src " + numbered("a", level) + " ";
  }
  text += "-f and -f src a1 -f dst b1 -k svc -v wb";
  return text;
}

std::vector<TextCase> buildCorpus() {
  std::vector<TextCase> cases;
  int n = 0;
  for (const char* text : kTypical) {
    char name[32];
    std::snprintf(name, sizeof name, "typical_%02d", ++n);
    cases.push_back({name, text, CaseKind::Typical, 0});
  }
  n = 0;
  for (const char* text : kVirtualLink) {
    char name[32];
    std::snprintf(name, sizeof name, "vl_%02d", ++n);
    cases.push_back({name, text, CaseKind::VirtualLink, 0});
  }
  n = 0;
  for (const char* text : kLegacy) {
    char name[32];
    std::snprintf(name, sizeof name, "legacy_%02d", ++n);
    cases.push_back({name, text, CaseKind::Legacy, 0});
  }
  cases.push_back({"large_filter_key_1000", largeRequest(1000), CaseKind::Large, 2000});
  cases.push_back({"deep_50", nestedRequest(50), CaseKind::Deep, 50});
  cases.push_back({"deep_50_unbracketed", nestedUnbracketedRequest(50), CaseKind::Deep, 50});
  for (long count : {10L, 100L, 1000L, 10000L, 100000L}) {
    cases.push_back({"keys_" + std::to_string(count), keyColumnRequest(count), CaseKind::ScaleKeys, count});
  }
  for (int depth = 1; depth <= 1000000; depth *= 10) {
    cases.push_back({"depth_" + std::to_string(depth), nestedRequest(depth), CaseKind::ScaleDepth, depth});
  }
  for (const Spoilt& spoilt : kRefused)
    cases.push_back({spoilt.name, spoilt.refused, CaseKind::Refused, 0, spoilt.accepted});
  for (const Spoilt& spoilt : kLegacyRefused) {
    cases.push_back({spoilt.name, spoilt.refused, CaseKind::LegacyRefused, 0, spoilt.accepted});
  }
  return cases;
}

}  // namespace bench
