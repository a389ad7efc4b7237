#include <algorithm>
#include <cassert>
#include <iterator>

#include "banque/importreleve.h"
#include "banque/textes.h"
#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/json.h"
#include "ctl/optionscommunes.h"
#include "journal/choixcomptes.h"
#include "store/cumuls.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct OptionsReleve {
  std::string action, fichier, compte, format, numero;
  bool essai = false;
};

constexpr const char* MotsSort[] = {"nouvelle", "connue", "hors_exercice", "illisible"};
constexpr const char* PhrasesSort[] = {"nouvelle", "déjà connue", "hors de l'exercice", "illisible"};

/// Of exactly that code, else the text as it is: the rule knows numbers.
std::string CompteDuCode(CFenlorApp& app, const std::string& texte) {
  for (const CompteOffert& compte : ComptesParCode(app, Tresorerie))
    if (compte.banque && CompareSansCasse(CompacteTexte(compte.code), CompacteTexte(texte)) == 0)
      return compte.compte;
  return texte;
}

FormatReleve FormatNomme(const std::string& mot) {
  const auto* trouve = std::find(std::begin(MotsFormatReleve), std::end(MotsFormatReleve), mot);
  assert(trouve != std::end(MotsFormatReleve));
  return static_cast<FormatReleve>(trouve - std::begin(MotsFormatReleve));
}

class CommandeReleve {
 public:
  CommandeReleve(Contexte& contexte, const OptionsReleve& options)
      : m_contexte(contexte), m_app(contexte.App), m_options(options) {}

  int Execute() {
    if (!m_contexte.OuvreExercice()) return StatutRefuse;
    std::string texte = m_options.compte, numero, octets;
    if (!PoseOption(m_contexte, "compte", m_options.compte, texte) ||
        !PoseOption(m_contexte, "numero", m_options.numero, numero))
      return StatutRefuse;
    const std::string compte = CompteDuCode(m_app, texte);
    if (const Refus refus = LitFichierReleve(m_app, m_options.fichier, octets))
      return m_contexte.Refuse(refus);
    const LectureReleve lecture = Lit(octets, QVAPI::GetLongCompte(compte));
    if (const Refus refus = PrepareReleve(m_app, compte, lecture, numero, m_apercu))
      return m_contexte.Refuse(refus);
    if (!m_options.essai)
      if (const Refus refus = ImporteReleve(m_app, m_apercu)) return m_contexte.Refuse(refus);
    return Raconte() && lecture.operations > 0 ? StatutFait : StatutRefuse;
  }

 private:
  LectureReleve Lit(const std::string& octets, const std::string& compte) {
    FormatReleve format = m_options.format.empty() ? DevineFormat(octets) : FormatNomme(m_options.format);
    const auto forme = format == FormatReleve::Csv ? FormeRetenue(m_app, compte, octets) : std::nullopt;
    return LitReleve(octets, format, forme ? &*forme : nullptr);
  }

  bool Raconte() {
    if (!m_apercu.autreNumero.empty())
      m_contexte.Avertit(TexteFormat(AvisAutreCompte, {m_apercu.numero, m_apercu.autreNumero}));
    if (m_apercu.sansIdentifiants) m_contexte.Avertit(Texte(AvisSansIdentifiants));
    for (const LigneApercu& ligne : m_apercu.lignes) {
      if (m_contexte.Globales.json ? !m_contexte.Ecrit(EnJson(ligne)) : !EnClair(ligne)) return false;
    }
    const auto nombre = [&](SortOperation sort) { return std::to_string(m_apercu.Nombre(sort)); };
    const std::string mots[] = {nombre(SortOperation::Nouvelle), nombre(SortOperation::Connue),
                                nombre(SortOperation::HorsExercice), nombre(SortOperation::Illisible)};
    if (m_contexte.Globales.json) return m_contexte.Ecrit(TotalJson());
    return m_contexte.Ecrit((m_options.essai ? "À importer : " : "Importées : ") + mots[0] +
                            " ; déjà connues : " + mots[1] + " ; hors de l'exercice : " + mots[2] +
                            " ; illisibles : " + mots[3] + ".\n");
  }

  /// What is new or cannot be read; the rest is counted.
  bool EnClair(const LigneApercu& ligne) {
    if (ligne.sort == SortOperation::Illisible) {
      m_contexte.Avertit(
          (ligne.rang ? "Ligne " + std::to_string(ligne.rang) + " illisible : " : std::string()) +
          ligne.raison);
      return true;
    }
    if (ligne.sort != SortOperation::Nouvelle && !m_options.essai) return true;
    assert(static_cast<std::size_t>(ligne.sort) < std::size(PhrasesSort));
    const OperationBanque& o = ligne.operation;
    const std::string montant = FormatMontant(DeCentimes(o.sens ? o.centimes : -o.centimes), 2);
    return m_contexte.Ecrit(StrDate(o.date) + "  " + montant + ' ' + o.monnaie + "  " + VersUtf8(o.libelle) +
                            " (" + PhrasesSort[static_cast<std::size_t>(ligne.sort)] + ")\n");
  }

  static std::string EnJson(const LigneApercu& ligne) {
    LigneJson json;
    assert(static_cast<std::size_t>(ligne.sort) < std::size(MotsSort));
    json.Texte("sort", MotsSort[static_cast<std::size_t>(ligne.sort)]).Entier("rang", ligne.rang);
    if (ligne.sort == SortOperation::Illisible) return json.Texte("raison", ligne.raison).Fin();
    const OperationBanque& o = ligne.operation;
    return json.Texte("Date", StrDate(o.date))
        .Texte("DateValeur", StrDate(o.dateValeur))
        .Texte("Libelle", o.libelle)
        .Nombre("Montant", DeCentimes(o.centimes))
        .Texte("Monnaie", o.monnaie)
        .Entier("Sens", o.sens)
        .Texte("Identifiant", o.id)
        .Fin();
  }

  std::string TotalJson() const {
    assert(static_cast<std::size_t>(m_apercu.format) < std::size(MotsFormatReleve));
    LigneJson json;
    json.Texte("format", MotsFormatReleve[static_cast<std::size_t>(m_apercu.format)])
        .Texte("numero", m_apercu.numero)
        .Booleen("essai", m_options.essai);
    for (std::size_t i = 0; i < std::size(MotsSort); ++i)
      json.Entier(MotsSort[i], static_cast<i64>(m_apercu.nombres[i]));
    if (m_apercu.solde)
      json.Nombre("solde", DeCentimes(*m_apercu.solde)).Texte("date_solde", StrDate(m_apercu.dateSolde));
    return json.Fin();
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsReleve& m_options;
  ApercuReleve m_apercu;
};

}  // namespace

void DeclareReleve(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsReleve>();
  Commande releve = ligne.Ajoute("releve", "Importe le relevé d'une banque",
                                 [o](Contexte& c) { return CommandeReleve(c, *o).Execute(); });
  releve.Action("importer", "Ajoute aux opérations à rapprocher celles d'un fichier de la banque", o->action)
      .Option("fichier", o->fichier, {"FICHIER"}, "Fichier OFX, CAMT.053, QIF, CFONB120 ou CSV")
      .Obligatoire()
      .Option("--compte", o->compte, {"CODE"}, "Compte bancaire, par son code ou son numéro")
      .Obligatoire()
      .Option("--format", o->format, FormeMots({"ofx", "camt", "qif", "cfonb", "csv"}),
              "Format du fichier (sinon reconnu à son contenu)")
      .Option("--numero", o->numero, {"NUMERO"}, "Compte du fichier, quand il en contient plusieurs")
      .Drapeau("--essai", o->essai, "Montre ce qui serait importé et n'écrit rien");
}

}  // namespace fenlor
