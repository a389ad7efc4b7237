#include "recherche/recherche.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <tuple>

#include "core/erreurs.h"
#include "core/valeurs.h"
#include "store/cumuls.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

template <std::size_t N>
std::string_view Vu(const char (&champ)[N]) {
  return {champ, strnlen(champ, N)};
}

/// Whole of a file that is small beside the journal.
constexpr u32 toutLeFichier = ~u32{0};

}  // namespace

bool Avant(const Trouvaille& a, const Trouvaille& b) {
  const auto cle = [](const Trouvaille& t) {
    return std::tuple(t.note, t.sorte == SorteTrouvaille::Ecriture ? 0 : 1, t.date);
  };
  if (cle(a) != cle(b)) return cle(a) > cle(b);
  if (a.sorte != b.sorte) return a.sorte < b.sorte;
  if (a.sorte == SorteTrouvaille::Ecriture)
    return std::tie(a.exercice, a.mouvement) > std::tie(b.exercice, b.mouvement);
  return std::tie(a.code, a.compte, a.exercice) < std::tie(b.code, b.compte, b.exercice);
}

Recherche::Recherche(CFenlorApp& app, const Requete& requete, Etendue etendue)
    : m_app(app), m_requete(requete), m_etendue(etendue), m_montants(requete.AvecMontant()) {
  if (m_requete.Vide()) return;
  if (etendue.tous) m_exercices = app.Magasin.ListeExercices();
  // The open one comes first.
  std::erase(m_exercices, app.NomExercice);
  if (!app.NomExercice.empty()) m_exercices.push_back(app.NomExercice);
}

Recherche::~Recherche() = default;

void Recherche::Note(const LecteurRecs& lecteur) {
  if (lecteur.Erreur() == 0 || m_echec) return;
  m_echec = Refus(ErrCodeOuverture, "", {std::to_string(lecteur.Erreur()), lecteur.Chemin()});
}

void Recherche::LitComptes(const std::string& dossier) {
  assert(!dossier.empty() && !m_exercice.empty());
  m_comptes.clear();
  LecteurRecs lecteur(m_app.Magasin, dossier, FichierComptes);
  const auto compte = [&](Position position, const void* rec) {
    const Plan& plan = *static_cast<const Plan*>(rec);
    CompteVu vu;
    vu.court = m_app.NumeroCourt(LitTexte(plan.Compte));
    m_comparateur.Code(Vu(plan.Compte), vu.accord);
    m_comparateur.Code(vu.court, vu.accord);
    m_comparateur.Code(Vu(plan.Code), vu.accord);
    Accord parLeNom = vu.accord;
    m_comparateur.Texte(Vu(plan.Designation), parLeNom);
    if (parLeNom.Entier(m_requete)) {
      Trouvaille& t = m_trouvailles.emplace_back();
      t.sorte = SorteTrouvaille::Compte;
      t.note = parLeNom.Note(m_requete);
      t.exercice = m_exercice;
      t.libelle = Vu(plan.Designation);
      t.compte = vu.court;
      t.code = Vu(plan.Code);
      t.type = plan.Type;
      t.position = position;
    }
    m_comparateur.Texte(Vu(plan.Designation), vu.accord, ForceDedans);
    m_comptes.emplace(Vu(plan.Compte), std::move(vu));
  };
  lecteur.Lit(toutLeFichier, compte);
  Note(lecteur);
}

void Recherche::LitRubriques(const std::string& dossier) {
  LecteurRecs lecteur(m_app.Magasin, dossier, FichierRubriques);
  const auto rubrique = [&](Position position, const void* rec) {
    const Rubrique& rub = *static_cast<const Rubrique*>(rec);
    Accord accord;
    const std::string code = CompacteTexte(Vu(rub.Rubrique));
    m_comparateur.Code(code, accord);
    m_comparateur.Texte(Vu(rub.Designation), accord);
    if (!accord.Entier(m_requete)) return;
    Trouvaille& t = m_trouvailles.emplace_back();
    t.sorte = SorteTrouvaille::Rubrique;
    t.note = accord.Note(m_requete);
    t.exercice = m_exercice;
    t.libelle = Vu(rub.Designation);
    t.code = code;
    t.position = position;
  };
  lecteur.Lit(toutLeFichier, rubrique);
  Note(lecteur);
}

void Recherche::Commence() {
  assert(!m_journal && !m_exercices.empty());
  m_exercice = m_exercices.back();
  m_exercices.pop_back();
  const std::string dossier =
      m_exercice == m_app.NomExercice ? m_app.PathExercice : m_app.Magasin.CheminExercice(m_exercice);
  LitComptes(dossier);
  LitRubriques(dossier);
  m_journal = std::make_unique<LecteurRecs>(m_app.Magasin, dossier, FichierJournal);
  m_courante = {};
  m_vues.clear();
}

bool Recherche::Avance(u32 emplacements) {
  if (!m_journal) {
    if (m_exercices.empty()) return false;
    Commence();
  }
  const auto ligne = [this](Position position, const void* rec) {
    Ajoute(position, *static_cast<const Line*>(rec));
  };
  if (m_journal->Lit(emplacements, ligne)) return true;
  Note(*m_journal);
  Termine();
  return !m_exercices.empty();
}

void Recherche::Ajoute(Position position, const Line& ligne) {
  assert(m_journal && position != 0);
  const u32 mouvement = ligne.Mouvement;
  const bool suivante = mouvement != m_courante.mouvement;
  if (suivante) {
    FinitEcriture();
    m_courante.mouvement = mouvement;
  }
  Vue& vue = m_courante;
  if (suivante) vue.position = position;
  if (suivante || std::memcmp(m_libelle, ligne.Libelle, sizeof m_libelle) != 0) {
    std::memcpy(m_libelle, ligne.Libelle, sizeof m_libelle);
    m_comparateur.Texte(Vu(ligne.Libelle), vue.accord);
    m_comparateur.Texte(Vu(ligne.Piece), vue.accord);
    vue.date = ligne.Date;
    for (std::size_t mot = 0; mot < m_requete.Mots().size(); ++mot)
      vue.accord.Note(mot, m_requete.Mots()[mot].SurDate(vue.date));
  }
  if (ligne.RappLibelle[0]) {
    vue.banque = position;
    m_comparateur.Texte(Vu(ligne.RappLibelle), vue.accord);
  }
  if (ligne.Role == RoleLibre) m_comparateur.Texte(Vu(ligne.Designation), vue.accord);
  if (const auto compte = m_comptes.find(Vu(ligne.Compte)); compte != m_comptes.end())
    vue.accord.Ajoute(compte->second.accord);
  const i64 franc = Centimes(ligne.MontantFranc), euro = Centimes(ligne.MontantEuro);
  for (std::size_t mot = 0; m_montants && mot < m_requete.Mots().size(); ++mot)
    if (m_requete.Mots()[mot].Montant(franc) || m_requete.Mots()[mot].Montant(euro))
      vue.accord.Note(mot, m_requete.Mots()[mot].forceMontant);
  if (ligne.Sens == 0) {
    vue.debitFranc += franc;
    vue.debitEuro += euro;
  }
}

void Recherche::FinitEcriture() {
  if (m_courante.mouvement != 0) m_vues.push_back(m_courante);
  m_courante = {};
}

void Recherche::Termine() {
  FinitEcriture();
  // The lines of an entry stand together but where they took the place of deleted ones.
  assert(m_journal && m_courante.mouvement == 0);
  const auto parNumero = [](const Vue& a, const Vue& b) { return a.mouvement < b.mouvement; };
  if (!std::is_sorted(m_vues.begin(), m_vues.end(), parNumero))
    std::stable_sort(m_vues.begin(), m_vues.end(), parNumero);
  std::vector<Vue> entieres;
  for (std::size_t i = 0; i < m_vues.size();) {
    Vue vue = m_vues[i];
    for (++i; i < m_vues.size() && m_vues[i].mouvement == vue.mouvement; ++i) {
      vue.accord.Ajoute(m_vues[i].accord);
      vue.position = std::min(vue.position, m_vues[i].position);
      vue.banque = std::max(vue.banque, m_vues[i].banque);
      vue.debitFranc += m_vues[i].debitFranc;
      vue.debitEuro += m_vues[i].debitEuro;
    }
    for (std::size_t mot = 0; m_montants && mot < m_requete.Mots().size(); ++mot)
      if (m_requete.Mots()[mot].Montant(vue.debitFranc) || m_requete.Mots()[mot].Montant(vue.debitEuro))
        vue.accord.Note(mot, m_requete.Mots()[mot].forceMontant);
    if (vue.accord.Entier(m_requete)) entieres.push_back(vue);
  }
  m_nbEcritures += entieres.size();
  const std::size_t garde =
      m_etendue.ecrituresAuPlus == 0 ? entieres.size() : std::min(m_etendue.ecrituresAuPlus, entieres.size());
  std::partial_sort(entieres.begin(), entieres.begin() + static_cast<std::ptrdiff_t>(garde), entieres.end(),
                    [this](const Vue& a, const Vue& b) {
                      return std::tuple(a.accord.Note(m_requete), a.date, a.mouvement) >
                             std::tuple(b.accord.Note(m_requete), b.date, b.mouvement);
                    });
  entieres.resize(garde);
  for (const Vue& vue : entieres) m_trouvailles.push_back(Ecriture(vue));
  m_vues.clear();
  m_journal.reset();
}

Trouvaille Recherche::Ecriture(const Vue& vue) {
  assert(m_journal && vue.mouvement != 0 && vue.position != 0);
  assert(vue.banque == 0 || vue.banque >= vue.position);
  Trouvaille t;
  t.note = vue.accord.Note(m_requete);
  assert(t.note > 0 && t.note <= 100);  // it has every word
  t.exercice = m_exercice;
  t.mouvement = vue.mouvement;
  t.date = vue.date;
  t.franc = DeCentimes(vue.debitFranc);
  t.euro = DeCentimes(vue.debitEuro);
  if (const auto* ligne = static_cast<const Line*>(m_journal->LitUn(vue.position))) {
    t.libelle = Vu(ligne->Libelle);
    t.piece = Vu(ligne->Piece);
    t.journal = ligne->Journal;
    t.ligne = ligne->Ligne;
    t.validee = ligne->Validee != 0;
    const auto compte = m_comptes.find(Vu(ligne->ComptePrincipal));
    if (compte != m_comptes.end()) t.compte = compte->second.court;
  }
  if (vue.banque != 0)
    if (const auto* ligne = static_cast<const Line*>(m_journal->LitUn(vue.banque)))
      t.banque = Vu(ligne->RappLibelle);
  return t;
}

std::vector<Trouvaille> Recherche::Trouvailles() {
  std::sort(m_trouvailles.begin(), m_trouvailles.end(), Avant);
  return m_trouvailles;
}

}  // namespace fenlor
