// A reader of statements, by FENLOR_FORMAT, is fed any bytes: whatever comes out holds what the import relies
// on.
#include <cstdio>

#include "banque/releve.h"
#include "banque/relevecsv.h"
#include "store/texte1252.h"

using namespace fenlor;

namespace {

void Trouve(const char* quoi, const std::string& detail = {}) {
  std::fprintf(stderr, "%s %s\n", quoi, VersUtf8(detail).c_str());
  std::abort();
}

void Controle(const LectureReleve& lecture) {
  for (const Releve& releve : lecture.comptes) {
    for (const OperationBanque& o : releve.operations) {
      if (!IsDateOk(o.date) || (o.dateValeur != 0 && !IsDateOk(o.dateValeur))) Trouve("date");
      if (o.centimes <= 0 || o.centimes > static_cast<i64>(MontantMax) * 100 || o.sens < 0 || o.sens > 1)
        Trouve("amount", std::to_string(o.centimes));
      if (o.libelle.size() > 80) Trouve("label", o.libelle);
      for (const char c : o.libelle)
        if (static_cast<unsigned char>(c) < 32) Trouve("control character", o.libelle);
    }
  }
  if (lecture.operations == 0 && lecture.plaintes.empty()) Trouve("nothing, without a word");
  for (const PlainteReleve& plainte : lecture.plaintes)
    if (plainte.raison.empty()) Trouve("a complaint without a reason");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* octets, std::size_t taille) {
  const std::string_view texte(reinterpret_cast<const char*>(octets), taille);
  DevineFormat(texte);
  constexpr auto format = static_cast<FormatReleve>(FENLOR_FORMAT);
  Controle(LitReleve(texte, format));
  if (format == FormatReleve::Csv && taille > 2) {
    FormeCsv forme =
        ProposeColonnes(texte.substr(2), static_cast<JeuTexte>(octets[0] % 3), ";,\t|"[octets[0] / 3 % 4]);
    forme.ordre = static_cast<OrdreDate>(octets[1] % 3);
    forme.inverse = octets[1] & 4;
    forme.entete = octets[1] >> 4;
    forme.colonnes[octets[1] % NbColonnesReleve] = octets[0] % 12;
    Controle(LitReleve(texte.substr(2), format, &forme));
    const auto relue = FormeDepuis(TexteForme(forme));
    forme.entete = 0;
    if (relue ? *relue != forme : forme.Complete()) Trouve("the form does not read back");
    if (relue) FormePour(texte, *relue);
    FormeDepuis(texte);
  }
  return 0;
}
