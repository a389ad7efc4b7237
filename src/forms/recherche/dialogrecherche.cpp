#include "forms/recherche/dialogrecherche.h"

#include <QKeyEvent>
#include <algorithm>
#include <tuple>

#include "core/valeurs.h"
#include "forms/recherche/textes.h"
#include "journal/listejournal.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int caracteresAuPlus = 120, delaiFrappe = 40;
constexpr u32 parPas = 8192;  ///< slots between two looks at the keyboard, about a millisecond
constexpr std::size_t ecrituresAuPlus = 100;  ///< of each exercice

constexpr const char* nomsJournaux[] = {"", "Recettes", "Dépenses", "Op. diverses"};

}  // namespace

CDialogRecherche::CDialogRecherche(ContexteUi& contexte, std::vector<CibleRecherche> cibles, QWidget* parent)
    : CZNDialog(contexte, u"Rechercher"_s, "DialogRecherche", parent),
      m_cibles(std::move(cibles)),
      m_liste(contexte) {
  Formulaire(Zone())
      .Champ(u"&Chercher :"_s, m_texte, "texte")
      .Limite(caracteresAuPlus)
      .Largeur(60)
      .Case(m_tous, u"&Tous les exercices"_s, "tous")
      .Seul(m_liste, "liste", true)
      .Seul(m_compte, "compte");
  const auto texte = [](std::string Ligne::*membre) {
    return [membre](const Ligne& l) { return l.*membre; };
  };
  m_liste.Suit<Ligne>({{Texte(ColonneQuoi), 12, texte(&Ligne::quoi)},
                       {"Date", 12, texte(&Ligne::date)},
                       {"Libellé"_w, 40, texte(&Ligne::libelle)},
                       {"Montant", 14, texte(&Ligne::montant), Cote::Droite},
                       {Texte(ColonneOu), 22, texte(&Ligne::ou)}},
                      m_lignes);
  m_liste.setAccessibleName(u"Trouvailles"_s);
  m_liste.setMinimumWidth(110 * m_liste.fontMetrics().averageCharWidth());
  m_liste.setMinimumHeight(16 * m_liste.fontMetrics().height());
  m_liste.SurActivation([this] { accept(); });
  m_texte.setClearButtonEnabled(true);
  m_texte.installEventFilter(this);
  Boutons(Mode::Simple);
  AjouteAide();

  m_frappe.setSingleShot(true);
  m_frappe.setInterval(delaiFrappe);
  m_pas.setInterval(0);
  connect(&m_texte, &QLineEdit::textChanged, this, [this] {
    m_recherche.reset();
    m_pas.stop();
    m_frappe.start();
  });
  connect(&m_tous, &QCheckBox::toggled, this, [this] {
    m_recherche.reset();
    m_frappe.start();
    m_texte.setFocus();
  });
  connect(&m_frappe, &QTimer::timeout, this, &CDialogRecherche::Cherche);
  connect(&m_pas, &QTimer::timeout, this, &CDialogRecherche::Avance);
  Montre();
}

const CDialogRecherche::Ligne* CDialogRecherche::Choix() const {
  const int ligne = m_liste.RangChoisi();
  return ligne < 0 || Repos() == false ? nullptr : &m_lignes[static_cast<std::size_t>(ligne)];
}

const Trouvaille* CDialogRecherche::Choisie() const {
  const Ligne* choix = Choix();
  return choix && choix->trouvaille >= 0 ? &m_trouvailles[static_cast<std::size_t>(choix->trouvaille)]
                                         : nullptr;
}

const CibleRecherche* CDialogRecherche::Cible() const {
  const Ligne* choix = Choix();
  return choix && choix->cible >= 0 ? &m_cibles[static_cast<std::size_t>(choix->cible)] : nullptr;
}

void CDialogRecherche::Cherche() {
  // What the books cannot hold is in none of them; a narrow blank of a figure that was pasted is none.
  QString texte = m_texte.text();
  texte.replace(QChar(0x202F), QChar(0xA0));
  m_requete = Requete(De1252(texte));
  m_trouvailles.clear();
  m_nombre = 0;
  m_recherche =
      std::make_unique<Recherche>(App(), m_requete, Recherche::Etendue{m_tous.isChecked(), ecrituresAuPlus});
  m_pas.start();
  Avance();
}

void CDialogRecherche::Avance() {
  if (!m_recherche) return m_pas.stop();
  if (m_recherche->Avance(parPas)) return;
  m_trouvailles = m_recherche->Trouvailles();
  m_nombre = m_recherche->NbEcritures();
  const Refus echec = m_recherche->Echec();
  m_recherche.reset();
  m_pas.stop();
  Montre();
  if (echec) m_compte.setText(Q(echec.texte));
}

CDialogRecherche::Ligne CDialogRecherche::LigneDe(const Trouvaille& t, int i) {
  Ligne ligne;
  ligne.note = t.note;
  ligne.trouvaille = i;
  ligne.libelle = t.libelle;
  if (t.exercice != App().NomExercice) ligne.ou = t.exercice + " - ";
  if (t.sorte != SorteTrouvaille::Ecriture) {
    ligne.quoi = Texte(t.sorte == SorteTrouvaille::Compte ? MotCompte : MotRubrique);
    ligne.rang = 1;
    ligne.ou += t.compte.empty() ? t.code : t.code.empty() ? t.compte : t.code + " - " + t.compte;
    return ligne;
  }
  ligne.rang = 3;
  ligne.quoi = Texte(MotEcriture);
  ligne.date = StrDate(t.date);
  ligne.montant = MonnaiesAffichees(App()).euro ? FormatEuro(t.euro) : FormatFranc(t.franc);
  if (t.journal >= JournalRecettes && t.journal <= JournalOD)
    ligne.ou += DepuisUtf8(nomsJournaux[t.journal]).value_or("") + " " + std::to_string(t.ligne);
  if (!t.compte.empty()) ligne.ou += ", " + t.compte;
  return ligne;
}

void CDialogRecherche::Montre() {
  m_lignes.clear();
  Comparateur comparateur(m_requete);
  for (std::size_t i = 0; i < m_cibles.size() && !m_requete.Vide(); ++i) {
    const CibleRecherche& cible = m_cibles[i];
    Accord accord;
    comparateur.Texte(cible.nom, accord);
    comparateur.Texte(cible.precise, accord, ForceDedans);
    comparateur.Texte(cible.autres, accord, ForceDedans);
    if (!accord.Entier(m_requete)) continue;
    Ligne& ligne = m_lignes.emplace_back();
    ligne.note = accord.Note(m_requete);
    ligne.cible = static_cast<int>(i);
    ligne.quoi = cible.sorte;
    ligne.libelle = cible.nom;
    ligne.ou = cible.precise;
    // Of what is named nowhere but in the text of a page, entries are better.
    ligne.rang = ligne.note > 100 / ForceExacte ? 2 : 4;
  }
  for (std::size_t i = 0; i < m_trouvailles.size(); ++i)
    m_lignes.push_back(LigneDe(m_trouvailles[i], static_cast<int>(i)));
  std::stable_sort(m_lignes.begin(), m_lignes.end(), [](const Ligne& a, const Ligne& b) {
    return std::tuple(a.note, -a.rang) > std::tuple(b.note, -b.rang);
  });
  m_liste.PoseTexteVide(TexteQ(m_requete.Vide()   ? RechercheVide
                               : m_requete.Trop() ? TropDeMots
                                                  : RechercheRien));
  m_liste.Relit(m_lignes.empty() ? -1 : 0);
  const std::string nombre = std::to_string(m_nombre);
  m_compte.setText(m_nombre == 0   ? QString()
                   : m_nombre == 1 ? TexteQ(UneTrouvee)
                   : m_nombre <= ecrituresAuPlus
                       ? TexteQ(FormatToutesTrouvees, {nombre})
                       : TexteQ(FormatTrouvees, {nombre, std::to_string(ecrituresAuPlus)}));
}

bool CDialogRecherche::eventFilter(QObject* objet, QEvent* evenement) {
  if (objet != &m_texte || evenement->type() != QEvent::KeyPress)
    return CZNDialog::eventFilter(objet, evenement);
  auto* touche = static_cast<QKeyEvent*>(evenement);
  switch (touche->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // Who types fast chooses what the whole text finds.
      if (m_frappe.isActive()) {
        m_frappe.stop();
        Cherche();
      }
      while (m_recherche) Avance();
      accept();
      return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      QCoreApplication::sendEvent(&m_liste, evenement);
      return true;
    default:
      return CZNDialog::eventFilter(objet, evenement);
  }
}

}  // namespace fenlor
