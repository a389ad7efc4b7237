#include "pages/etatdoc.h"
#include "pages/textes.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <limits>
#include <new>

namespace fenlor {

namespace {

constexpr std::size_t tailleEnteteMax = 512;
constexpr u64 delaiFermeture = 2000;

u32 NbRetours(std::string_view texte) {
  return static_cast<u32>(std::count(texte.begin(), texte.end(), '\n'));
}

std::string Borne(const FormatEtat& format, std::initializer_list<ArgumentEtat> arguments) {
  std::string texte;
  RemplitEtat(texte, format.Format(), arguments);
  texte.resize(std::min(texte.size(), tailleEnteteMax));
  return texte;
}

std::string_view Octets(const BlocEtat* blocs, std::size_t nombre) {
  return {reinterpret_cast<const char*>(blocs), nombre * sizeof(BlocEtat)};
}

}  // namespace

Refus CEtatDoc::OnNewDocument() {
  if (Cree())
    BuildEtat();
  else
    Abandonne(Refus(ErrFichierTemporaire));
  for (FichierTampon* fichier : {&m_texte, &m_index})
    if (EnCours() && !fichier->Vide()) EchoueSur(*fichier);
  if (!EnCours()) {
    m_texte.Ferme();
    m_index.Ferme();
  }
  return m_refus;
}

void CEtatDoc::Abandonne(const Refus& refus) {
  assert(refus);
  if (EnCours()) m_refus = refus;
}

void CEtatDoc::Abandonne() { Abandonne(Refus::DejaDit(ErrEtatAbsent, "", {m_titre})); }

bool CEtatDoc::Cree() {
  const bool faits = m_texte.Cree() && m_index.Cree();
  m_compteur = {};
  m_nbBlocs = 1;
  m_mesures = {};
  m_titre.clear();
  m_entete.clear();
  m_pied.clear();
  m_refus = {};
  m_paysage = false;
  m_impressions = 0;
  m_finImpression = 0;
  const BlocEtat debut;
  // To the disk at once: a folder without room lets files be made and nothing be written.
  const bool prete = faits && m_index.Ajoute(Octets(&debut, 1)) && m_index.Vide();
  assert(!prete || (m_texte.Taille() == 0 && m_index.Taille() == sizeof(BlocEtat)));
  return prete;
}

void CEtatDoc::BuildEtat() { EtatPrintf(EtatSansTexte); }

void CEtatDoc::SetEtatTitre(const FormatEtat& format, std::initializer_list<ArgumentEtat> arguments) {
  m_titre = Borne(format, arguments);
  m_mesures.lignesTitre =
      std::max(u32{1}, NbRetours(Texte(EtatTitreIdentite)) + NbRetours(Texte(EtatTitrePage)));
}

void CEtatDoc::SetEtatEntete(const FormatEtat& format, std::initializer_list<ArgumentEtat> arguments) {
  m_entete = Borne(format, arguments);
  m_mesures.lignesEntete = std::max(u32{1}, NbRetours(m_entete));
}

void CEtatDoc::SetEtatPied(const FormatEtat& format, std::initializer_list<ArgumentEtat> arguments) {
  m_pied = Borne(format, arguments);
  m_mesures.lignesPied = NbRetours(m_pied);
}

StylePapier CEtatDoc::Style() const { return m_style ? *m_style : LitStylePapier(App); }

bool CEtatDoc::SetEtatPaysage(bool valeur) { return std::exchange(m_paysage, valeur); }

void CEtatDoc::EtatPrintf(const FormatEtat& format, std::span<const ArgumentEtat> arguments) {
  if (!EnCours()) return;
  m_travail.clear();
  format.Remplit(m_travail, arguments);
  const bool unBloc =
      format.LignesDuBloc() && !m_travail.empty() &&
      std::all_of(arguments.begin(), arguments.end(), [](const ArgumentEtat& a) { return a.SansMarque(); });
  Ecrit(m_travail, unBloc ? format.LignesDuBloc() : std::nullopt, format.Titre());
}

void CEtatDoc::EcritEtat(std::string_view texte) { Ecrit(texte, std::nullopt, false); }

void CEtatDoc::Ecrit(std::string_view texte, std::optional<u32> lignesDuBloc, bool titre) {
  if (!EnCours()) return;
  if (texte.size() > std::numeric_limits<u32>::max() - m_compteur.Offset())
    return Echoue(TexteErreurSysteme(EFBIG));
  m_fermes.clear();
  if (lignesDuBloc)
    m_compteur.CompteBloc(texte.size(), *lignesDuBloc, titre, m_fermes);
  else
    m_compteur.Compte(texte, m_mesures.lignesEntete, m_mesures.lignesPied, m_fermes);
  m_nbBlocs += static_cast<u32>(m_fermes.size());
  if (!m_texte.Ajoute(texte)) return EchoueSur(m_texte);
  if (!m_index.Ajoute(Octets(m_fermes.data(), m_fermes.size()))) return EchoueSur(m_index);
  assert(m_texte.Taille() == m_compteur.Offset());
  assert(m_index.Taille() == u64{m_nbBlocs} * sizeof(BlocEtat));
}

void CEtatDoc::Echoue(const std::string& raison) { Abandonne(Refus(ErrEtatEcriture, "", {raison})); }

void CEtatDoc::EchoueSur(const FichierTampon& fichier) {
  Echoue(fichier.Echec().empty() ? TexteErreurSysteme(EBADF) : fichier.Echec());
}

int CEtatDoc::LitBlocs(u32 premier, BlocEtat* blocs, u32 nombre) {
  if (premier < 1 || premier > m_nbBlocs) return 0;
  nombre = std::min(nombre, m_nbBlocs - premier + 1);
  const u64 offset = u64{premier - 1} * sizeof(BlocEtat);
  assert(offset + u64{nombre} * sizeof(BlocEtat) <= m_index.Taille());
  const auto lecture =
      m_index.Lit(offset, reinterpret_cast<char*>(blocs), nombre * static_cast<u32>(sizeof(BlocEtat)));
  return lecture.placee && lecture.lue ? static_cast<int>(nombre) : -1;
}

BlocEtat CEtatDoc::LitBloc(u32 numero) {
  BlocEtat bloc;
  return LitBlocs(numero, &bloc, 1) == 1 ? bloc : BlocEtat{};
}

std::string CEtatDoc::LitTexte(u32 debut, u32 fin) {
  std::string texte;
  if (fin <= debut) return texte;
  try {
    texte.resize(fin - debut);
  } catch (const std::bad_alloc&) {
    App.Boite.Erreur(0, Texte(ErrEtatMemoire));
    return texte;
  }
  assert(texte.size() == fin - debut);
  const auto lecture = m_texte.Lit(debut, texte.data(), fin - debut);
  if (!lecture.placee) App.Boite.Erreur(0, Texte(ErrEtatPlacement));
  if (!lecture.lue) App.Boite.Erreur(0, Texte(ErrEtatLecture));
  return texte;
}

void CEtatDoc::FinitImpression(u64 maintenant) {
  if (m_impressions > 0) --m_impressions;
  m_finImpression = maintenant;
}

bool CEtatDoc::PeutFermer(u64 maintenant) const {
  return m_impressions == 0 && maintenant > m_finImpression + delaiFermeture;
}

}  // namespace fenlor
