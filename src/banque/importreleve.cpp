#include "banque/importreleve.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <memory>
#include <tuple>
#include <unordered_map>

#include "banque/operations.h"
#include "banque/textes.h"
#include "core/btfiles.h"
#include "core/erreurs.h"
#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "store/cumuls.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Two writings of a label in different formats agree on so many letters and digits, or the shorter one ends
/// before.
constexpr std::size_t LettresCommunes = 20;
/// A bank moves an operation by so many days; further away its id is another month's, or a mandate's.
constexpr unsigned JoursDEcart = 5;

bool Proches(Date a, Date b) {
  for (unsigned jours = 0; jours < JoursDEcart && a != b; ++jours) (a < b ? a : b) = NextDate(std::min(a, b));
  return a == b;
}
constexpr std::size_t TailleIdentifiant = sizeof(OperationImportee::Identifiant) - 1;

std::string Monnaie(const std::string& texte, bool euro) {
  const std::string nue = LibelleNu(texte);
  if (texte.starts_with('\x80') || nue.starts_with("EUR") || nue == "978") return "EUR";
  if (nue == "F" || nue == "FF" || nue.starts_with("FR")) return "FRF";
  return nue.empty() ? (euro ? "EUR" : "FRF") : std::string();
}

/// An id as it is kept: a longer one ends in a number made of all of it.
std::string IdentifiantCourt(const std::string& id) {
  if (id.size() <= TailleIdentifiant) return id;
  u64 nombre = 14695981039346656037u;
  for (const char c : id) nombre = (nombre ^ static_cast<unsigned char>(c)) * 1099511628211u;
  return id.substr(0, TailleIdentifiant - 21) + '#' + std::to_string(nombre);
}

/// The words of a label, in no order: one format puts the name in front, another the kind of operation.
std::vector<std::string> Mots(const std::string& libelle) {
  std::vector<std::string> mots;
  for (std::size_t debut = 0; debut < libelle.size();) {
    const std::size_t fin = std::min(libelle.find(' ', debut), libelle.size());
    if (std::string mot = LibelleNu(libelle.substr(debut, fin - debut)); !mot.empty()) mots.push_back(mot);
    debut = fin + 1;
  }
  std::sort(mots.begin(), mots.end());
  return mots;
}

enum class Ressemblance { Egale, MemesMots, Proche };

/// Day, amount, side and currency: what two operations must share in any case.
struct Seau {
  Date date;
  i64 centimes;
  bool credit, euro;
  bool operator==(const Seau&) const = default;
};
struct HachageSeau {
  std::size_t operator()(const Seau& s) const {
    u64 h = (u64{s.date} << 2 | u64{s.credit} << 1 | u64{s.euro}) * 0x9E3779B97F4A7C15u;
    h = (h ^ (h >> 29) ^ static_cast<u64>(s.centimes)) * 0xBF58476D1CE4E5B9u;
    return static_cast<std::size_t>(h ^ (h >> 32));
  }
};

/// The imported operations of one account, each of which answers for one operation of the file.
class Connues {
 public:
  void Ajoute(const OperationImportee& rec) {
    const std::size_t n = m_operations.size();
    const char format = static_cast<char>('0' + std::clamp<int>(rec.Format, 0, 9));
    const std::string id = LitTexte(rec.Identifiant);
    const i64 centimes = Centimes(rec.Montant);
    m_operations.push_back({rec.Date, centimes, rec.Sens, false, LitTexte(rec.Libelle)});
    if (!id.empty()) m_parId.emplace(format + id, n);
    // By the format whose ids it has: such an operation is no other one's of that format with an id.
    auto& formats = m_seaux[{rec.Date, centimes, rec.Sens != 0, LitTexte(rec.Monnaie) == "EUR"}];
    formats[id.empty() ? '0' : format].emplace(LibelleNu(m_operations[n].libelle), n);
  }

  /// An id of the file stands for another amount or time: the bank counts anew in each file.
  bool Contredit(char format, const OperationBanque& operation) const {
    const auto [debut, fin] = m_parId.equal_range(format + IdentifiantCourt(operation.id));
    return debut != fin && std::none_of(debut, fin, [&](const auto& connue) {
             return m_operations[connue.second].Peut(operation);
           });
  }

  bool PrendId(char format, const OperationBanque& operation) {
    const auto [debut, fin] = m_parId.equal_range(format + IdentifiantCourt(operation.id));
    for (auto connue = debut; connue != fin; ++connue) {
      Une& une = m_operations[connue->second];
      if (une.prise || !une.Peut(operation)) continue;
      une.prise = true;
      m_parId.erase(connue);
      return true;
    }
    return false;
  }

  /// `Proche`: one of which the other is a shorter or longer writing. `format`: with ids of its own, 0 when
  /// it has none that counts.
  bool PrendLibelle(char format, const OperationBanque& operation, const std::string& libelle,
                    Ressemblance ressemblance) {
    const auto seau =
        m_seaux.find({operation.date, operation.centimes, operation.sens != 0, operation.monnaie == "EUR"});
    if (seau == m_seaux.end()) return false;
    const std::string nu = LibelleNu(libelle);
    for (auto& [autre, libelles] : seau->second) {
      if (autre == format && autre != '0') continue;
      const bool prise = ressemblance == Ressemblance::Egale       ? Prend(libelles, nu, true)
                         : ressemblance == Ressemblance::MemesMots ? PrendMots(libelles, Mots(libelle))
                                                                   : PrendProche(libelles, nu);
      if (prise) return true;
    }
    return false;
  }

 private:
  struct Une {
    Date date = 0;
    i64 centimes = 0;
    i16 sens = 0;
    bool prise = false;
    std::string libelle;

    bool Peut(const OperationBanque& operation) const {
      return centimes == operation.centimes && sens == operation.sens && Proches(date, operation.date);
    }
  };

  using ParLibelle = std::multimap<std::string, std::size_t>;

  /// The first that is left with that label, or with one that begins so.
  bool Prend(ParLibelle& libelles, const std::string& nu, bool exacte) {
    for (auto connue = libelles.lower_bound(nu); connue != libelles.end();) {
      if (exacte ? connue->first != nu : !connue->first.starts_with(nu)) return false;
      Une& une = m_operations[connue->second];
      const bool libre = !une.prise;
      une.prise = true;
      connue = libelles.erase(connue);
      if (libre) return true;
    }
    return false;
  }

  /// Among so many of one day and amount: a file of nothing else is no statement.
  bool PrendMots(ParLibelle& libelles, const std::vector<std::string>& mots) {
    constexpr std::size_t vues = 20;
    std::size_t n = 0;
    for (auto connue = libelles.begin(); connue != libelles.end() && n < vues; ++connue, ++n) {
      const Une& une = m_operations[connue->second];
      if (!une.prise && Mots(une.libelle) == mots) return Prend(libelles, std::string(connue->first), true);
    }
    return false;
  }

  bool PrendProche(ParLibelle& libelles, const std::string& nu) {
    if (Prend(libelles, nu.substr(0, LettresCommunes), false)) return true;
    for (std::size_t n = std::min(nu.size(), LettresCommunes); n-- > 0;)
      if (Prend(libelles, nu.substr(0, n), true)) return true;
    return false;
  }

  std::vector<Une> m_operations;
  std::multimap<std::string, std::size_t> m_parId;
  std::unordered_map<Seau, std::map<char, ParLibelle>, HachageSeau> m_seaux;
};

bool LitConnues(CFenlorApp& app, const std::string& compte, Connues& connues) {
  assert(compte == QVAPI::GetLongCompte(compte));
  CReleves releves(app, app.PathExercice);
  if (!releves.OpenFile()) return false;
  return app.Magasin.QVParcoursCle(releves.NumCle, compte, compte + '\xFF', [&](Position, const void* rec) {
    connues.Ajoute(*static_cast<const OperationImportee*>(rec));
    return true;
  });
}

/// A file may hold the statement of a month behind those of its days: an operation that stands once in each
/// is one, and known from the second on.
void MarqueRepetees(std::vector<LigneApercu>& lignes) {
  std::map<std::tuple<std::string, Date, i64, i16>, u32> releves;
  for (LigneApercu& ligne : lignes) {
    const OperationBanque& o = ligne.operation;
    if (o.id.empty() || ligne.sort != SortOperation::Nouvelle) continue;
    const auto [premiere, neuve] = releves.try_emplace({o.id, o.date, o.centimes, o.sens}, o.releve);
    if (!neuve && premiere->second != o.releve) ligne.sort = SortOperation::Connue;
  }
}

/// What stands more than once in one file tells nothing apart.
void OteIdentifiantsDoubles(std::vector<LigneApercu>& lignes) {
  std::map<std::string, unsigned> nombre;
  for (const LigneApercu& ligne : lignes)
    if (ligne.sort != SortOperation::Connue) ++nombre[ligne.operation.id];
  for (LigneApercu& ligne : lignes)
    if (nombre[ligne.operation.id] > 1) ligne.operation.id.clear();
}

/// Who is known: ids first, then equal labels of the day, then labels that go together.
void Classe(Connues& connues, ApercuReleve& apercu) {
  const char format = static_cast<char>('0' + static_cast<int>(apercu.format));
  std::vector<LigneApercu*> restent;
  for (LigneApercu& ligne : apercu.lignes)
    if (ligne.sort == SortOperation::Nouvelle) restent.push_back(&ligne);
  apercu.sansIdentifiants = std::any_of(restent.begin(), restent.end(), [&](const LigneApercu* ligne) {
    return !ligne->operation.id.empty() && connues.Contredit(format, ligne->operation);
  });
  if (apercu.sansIdentifiants)
    for (LigneApercu& ligne : apercu.lignes) ligne.operation.id.clear();
  const auto passe = [&](auto connue) {
    std::erase_if(restent, [&](LigneApercu* ligne) {
      if (!connue(ligne->operation)) return false;
      ligne->sort = SortOperation::Connue;
      return true;
    });
  };
  const auto siens = [&](const OperationBanque& o) { return o.id.empty() ? '0' : format; };
  passe([&](const OperationBanque& o) { return !o.id.empty() && connues.PrendId(format, o); });
  for (const Ressemblance r : {Ressemblance::Egale, Ressemblance::MemesMots, Ressemblance::Proche}) {
    passe([&](const OperationBanque& o) { return connues.PrendLibelle(siens(o), o, o.libelle, r); });
    passe([&](const OperationBanque& o) {
      return !o.ancienLibelle.empty() && connues.PrendLibelle(siens(o), o, o.ancienLibelle, r);
    });
  }
}

/// Letters and digits of two writings of one account at a bank: a part of the other.
bool MemeNumero(const std::string& a, const std::string& b) {
  const std::string nuA = LibelleNu(a), nuB = LibelleNu(b);
  return nuA.find(nuB) != std::string::npos || nuB.find(nuA) != std::string::npos;
}

std::string NumeroRetenu(CFenlorApp& app, const std::string& compte) {
  return app.Reglages.LitIni(Texte(SecReleves), TexteFormat(CleNumeroBanque, {compte}));
}

Refus EchecReglages(CFenlorApp& app) {
  const Profil& reglages = app.Magasin.Reglages();
  return Refus(ErrReglages, "", {reglages.Chemin(), app.Magasin.QVErreurTexte(reglages.Erreur())});
}

/// The account of the file; null: none, with what is wrong.
const Releve* Choisit(CFenlorApp& app, const ApercuReleve& apercu, const LectureReleve& lecture,
                      const std::string& numero, Refus& refus) {
  std::string tous;
  const std::string voulu = numero.empty() ? NumeroRetenu(app, apercu.compte) : numero;
  const std::vector<std::string> noms = NomsComptes(lecture);
  std::vector<const Releve*> semblables;
  for (std::size_t i = 0; i < noms.size(); ++i) {
    if (!voulu.empty() && LibelleNu(noms[i]) == LibelleNu(voulu)) return &lecture.comptes[i];
    if (!voulu.empty() && MemeNumero(noms[i], voulu)) semblables.push_back(&lecture.comptes[i]);
    tous += (tous.empty() ? "" : ", ") + noms[i];
  }
  if (semblables.size() == 1) return semblables.front();
  if (!numero.empty() && semblables.empty())
    refus = Refus(ErrNumeroBanque, "numero", {numero, tous});
  else if (noms.size() > 1)
    refus = Refus(ErrPlusieursComptes, "numero", {tous});
  return refus || noms.empty() ? nullptr : &lecture.comptes.front();
}

void Releve_(CFenlorApp& app, const Releve& releve, const std::string& nom, ApercuReleve& apercu) {
  assert(apercu.lignes.empty() && !apercu.compte.empty());
  const bool euro = app.Reglages.IsEuro();
  const Date debut = app.Reglages.GetDebutExercice(), fin = app.Reglages.GetFinExercice();
  const std::string retenu = NumeroRetenu(app, apercu.compte);
  apercu.numero = nom;
  if (!retenu.empty() && !nom.empty() && !MemeNumero(retenu, nom)) apercu.autreNumero = retenu;
  apercu.solde = releve.solde;
  apercu.dateSolde = releve.dateSolde;
  apercu.monnaie = Monnaie(releve.monnaie, euro);
  if (apercu.monnaie.empty()) apercu.solde.reset();
  apercu.lignes.reserve(releve.operations.size());
  for (const OperationBanque& operation : releve.operations) {
    LigneApercu ligne{SortOperation::Nouvelle, operation.rang, operation, {}};
    const std::string dite = operation.monnaie.empty() ? releve.monnaie : operation.monnaie;
    ligne.operation.monnaie = Monnaie(dite, euro);
    if (ligne.operation.monnaie.empty()) {
      ligne.sort = SortOperation::Illisible;
      ligne.raison = TexteFormat(PlainteMonnaie, {dite});
    } else if (operation.date < debut || operation.date > fin) {
      ligne.sort = SortOperation::HorsExercice;
    }
    apercu.lignes.push_back(std::move(ligne));
  }
}

void Compose(CFenlorApp& app, const ApercuReleve& apercu, const OperationBanque& operation, Banque& banque,
             OperationImportee& importee) {
  assert(operation.centimes > 0 && IsDateOk(operation.date));
  const f64 montant = DeCentimes(operation.centimes), taux = app.Magasin.GetTauxEuro(operation.date);
  const bool euro = operation.monnaie == "EUR";
  banque = {};
  PoseTexte(banque.Compte, apercu.compte);
  PoseTexte(banque.Libelle, operation.libelle);
  banque.Date = operation.date;
  banque.DateValeur = operation.dateValeur ? operation.dateValeur : operation.date;
  banque.MontantEuro = euro ? montant : QVAPI::ConvertFrancToEuro(taux, montant);
  banque.MontantFranc = euro ? QVAPI::ConvertEuroToFranc(taux, montant) : montant;
  banque.Sens = operation.sens;
  importee = {};
  PoseTexte(importee.Compte, apercu.compte);
  importee.Date = operation.date;
  importee.DateValeur = banque.DateValeur;
  importee.Montant = montant;
  PoseTexte(importee.Monnaie, operation.monnaie);
  importee.Sens = operation.sens;
  importee.Format = static_cast<i16>(apercu.format);
  PoseTexte(importee.Libelle, operation.libelle);
  PoseTexte(importee.Identifiant, IdentifiantCourt(operation.id));
}

Refus RetientSolde(CFenlorApp& app, const ApercuReleve& apercu) {
  assert(!apercu.compte.empty());
  if (!apercu.solde || apercu.dateSolde > app.Reglages.GetFinExercice()) return {};
  if (apercu.dateSolde != 0 && apercu.dateSolde < app.Reglages.GetDebutExercice()) return {};
  const auto connu = LitSoldeReleve(app, apercu.compte);
  if (connu && connu->date > apercu.dateSolde) return {};
  SoldeReleve solde;
  solde.montant = DeCentimes(*apercu.solde);
  solde.euro = apercu.monnaie == "EUR";
  solde.date = apercu.dateSolde;
  return EcritSoldeReleve(app, apercu.compte, solde);
}

Refus EcritNumero(CFenlorApp& app, const std::string& compte, const std::string& numero) {
  if (numero == NumeroRetenu(app, compte)) return {};
  const bool ecrit = app.Reglages.EcritIni(Texte(SecReleves), TexteFormat(CleNumeroBanque, {compte}), numero);
  return ecrit ? Refus{} : EchecReglages(app);
}

/// What the next import goes by, and the balance.
Refus RetientReglages(CFenlorApp& app, const ApercuReleve& apercu) {
  if (const Refus refus = RetientSolde(app, apercu)) return refus;
  return apercu.numero.empty() ? Refus{} : EcritNumero(app, apercu.compte, apercu.numero);
}

Refus EcritOperations(CFenlorApp& app, const ApercuReleve& apercu) {
  CBanques banques(app, app.PathExercice);
  CReleves releves(app, app.PathExercice);
  if (!banques.OpenFile() || !releves.OpenFile()) return EchecFichier();
  QVAPI::Unite unite(app.Magasin);
  for (const LigneApercu& ligne : apercu.lignes) {
    if (ligne.sort != SortOperation::Nouvelle) continue;
    Compose(app, apercu, ligne.operation, *banques.Rec, *releves.Rec);
    if (!banques.Add() || !releves.Add()) return EchecFichier();
  }
  // The settings first: they go back with the unit, and a kill between the two leaves nothing that another
  // import would not bring.
  const auto avant = LitSoldeReleve(app, apercu.compte);
  const std::string numero = NumeroRetenu(app, apercu.compte);
  Refus refus = RetientReglages(app, apercu);
  if (!refus && unite.Valide()) return {};
  if (!refus) refus = app.EchecMagasin();
  // Where these fail too, the first failure is the one to tell.
  static_cast<void>(EcritSoldeReleve(app, apercu.compte, avant));
  static_cast<void>(EcritNumero(app, apercu.compte, numero));
  return refus;
}

}  // namespace

std::vector<std::string> NomsComptes(const LectureReleve& lecture) {
  std::map<std::string, unsigned> nombre;
  for (const Releve& releve : lecture.comptes) ++nombre[releve.compte];
  std::vector<std::string> noms;
  for (const Releve& releve : lecture.comptes) {
    const bool seul = nombre[releve.compte] == 1 || releve.monnaie.empty();
    noms.push_back(seul ? releve.compte : LibelleNet(releve.compte + ' ' + releve.monnaie));
  }
  return noms;
}

Refus PrepareReleve(CFenlorApp& app, const std::string& compte, const LectureReleve& lecture,
                    const std::string& numero, ApercuReleve& apercu) {
  apercu = {};
  if (const Refus r = app.ControleEcriture()) return r;
  if (const Refus refus = ControleCompteBanque(app, compte)) return refus;
  apercu.compte = QVAPI::GetLongCompte(compte);
  apercu.format = lecture.format;
  Refus refus;
  const Releve* releve = Choisit(app, apercu, lecture, numero, refus);
  if (refus) return refus;
  if (releve) {
    const auto rang = static_cast<std::size_t>(releve - lecture.comptes.data());
    Releve_(app, *releve, NomsComptes(lecture)[rang], apercu);
    MarqueRepetees(apercu.lignes);
    OteIdentifiantsDoubles(apercu.lignes);
    Connues connues;
    if (!LitConnues(app, apercu.compte, connues)) return app.EchecMagasin();
    Classe(connues, apercu);
  }
  for (const PlainteReleve& plainte : lecture.plaintes)
    apercu.lignes.push_back({SortOperation::Illisible, plainte.rang, {}, plainte.raison});
  for (const LigneApercu& ligne : apercu.lignes) ++apercu.nombres[static_cast<std::size_t>(ligne.sort)];
  return {};
}

Refus ImporteReleve(CFenlorApp& app, const ApercuReleve& apercu) {
  if (const Refus r = app.ControleEcriture()) return r;
  return apercu.Nombre(SortOperation::Nouvelle) > 0 ? EcritOperations(app, apercu)
                                                    : RetientReglages(app, apercu);
}

std::optional<FormeCsv> FormeRetenue(CFenlorApp& app, const std::string& compte, std::string_view octets) {
  const auto forme = FormeDepuis(app.Reglages.LitIni(Texte(SecReleves), TexteFormat(CleFormeCsv, {compte})));
  if (!forme) return {};
  const FormeCsv sienne = FormePour(octets, *forme);
  const bool autres = forme->titres != 0 && sienne.titres != forme->titres;
  return autres ? std::nullopt : std::optional(sienne);
}

Refus RetientForme(CFenlorApp& app, const std::string& compte, const FormeCsv& forme) {
  const bool ecrit =
      app.Reglages.EcritIni(Texte(SecReleves), TexteFormat(CleFormeCsv, {compte}), TexteForme(forme));
  return ecrit ? Refus{} : EchecReglages(app);
}

Refus LitFichierReleve(CFenlorApp& app, const std::string& chemin, std::string& octets) {
  std::unique_ptr<Fichier> fichier;
  int code = app.Magasin.SystemeFichiers().Ouvre(chemin, Systeme::Lecture, fichier);
  octets.clear();
  for (std::size_t lus = 1; code == 0 && lus != 0 && octets.size() <= TailleReleveMax;) {
    const std::size_t place = octets.size();
    octets.resize(place + (1u << 20));
    code = fichier->Lit(octets.data() + place, 1u << 20, place, lus);
    octets.resize(place + lus);
  }
  if (code == 0) return {};
  return Refus(ErrOuvertureFichier, "",
               {DepuisUtf8(chemin).value_or(chemin), " : " + app.Magasin.QVErreurTexte(code)});
}

}  // namespace fenlor
