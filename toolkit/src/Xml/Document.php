<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Xml;

use Sepa\Toolkit\File\Part;

/** A message of ISO 20022: what it is, and the records in it. */
final class Document
{
    /** What goes before the root element. */
    private const PROLOG = '/^(?:\xEF\xBB\xBF)?(?:\s++|<\?.*?\?>|<!--.*?-->)*+/s';

    private const VERSION = '/\b((?:camt|pain)\.\d{3}\.\d{3}\.\d{2})/';

    /** Elements around the one that tells the kind, at most. */
    private const WRAPPERS = 8;

    /** @var string name of the element that tells what the message is, such as BkToCstmrStmt; '' if there is none */
    public string $root = '';

    /** @var string its version as it says, such as camt.053.001.08; '' if it says none */
    public string $version = '';

    /** @var bool whether it has a DOCTYPE, and is not read any further */
    public bool $hasDoctype = false;

    private ?\XMLReader $reader;

    private Utf8 $encoding;

    private ?Records $records = null;

    /** @param list<string> $roots elements that are looked for; of others the first below Document is the root */
    public function __construct(Part $part, array $roots)
    {
        $this->encoding = new Utf8();
        libxml_clear_errors();
        $prolog = preg_match(self::PROLOG, $part->head(), $match) ? strlen($match[0]) : 0;
        $this->hasDoctype = strncasecmp(substr($part->head(), $prolog, 9), '<!DOCTYPE', 9) === 0;
        $this->reader = $this->hasDoctype ? null : Bytes::reader($this->encoding->each($part->head(), $part->chunks()));
        if ($this->reader) {
            $this->findRoot($this->reader, $roots);
        }
    }

    /**
     * The records below the root element, see Records; once.
     *
     * @param array<string, array<string, string>> $tables
     */
    public function records(array $tables): Records
    {
        return $this->records = new Records($this->reader, $tables);
    }

    /** @return string|null why the document is not read to its end, as the XML library tells it; null if it is */
    public function damage(): ?string
    {
        // There is one place for errors, which others use, too.
        $error = $this->hasDoctype ? false : libxml_get_last_error();
        if ($error && $error->level === LIBXML_ERR_FATAL && Bytes::isOurs($error->file)) {
            return trim(strtok($error->message, "\n")) . ", line $error->line";
        }

        if ($this->records && !$this->records->isWhole()) {
            return 'it ends too early';
        }

        return $this->records && $this->records->goesOn() ? 'another message follows in the same document' : null;
    }

    /** Whether texts were no UTF-8 although nothing else was said. */
    public function isReencoded(): bool
    {
        return $this->encoding->mended;
    }

    /** @param list<string> $roots */
    private function findRoot(\XMLReader $reader, array $roots): void
    {
        for ($elements = 0; $elements < self::WRAPPERS && @$reader->read();) {
            if ($reader->nodeType === \XMLReader::DOC_TYPE) {
                $this->hasDoctype = true;

                return;
            }
            if ($reader->nodeType !== \XMLReader::ELEMENT) {
                continue;
            }
            ++$elements;
            $name = $reader->localName;
            $this->version = preg_match(self::VERSION, $reader->namespaceURI, $match) ? $match[1] : $this->version;
            if (in_array($name, $roots, true)) {
                $this->root = $name;

                return;
            }
            $this->root = $elements <= 2 && $name !== 'Document' ? $name : $this->root;
        }
    }
}
