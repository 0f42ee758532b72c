<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement;

use Sepa\Toolkit\File\Kind;
use Sepa\Toolkit\File\Part as File;
use Sepa\Toolkit\Statement\Camt\Messages;
use Sepa\Toolkit\Statement\Camt\Tables;
use Sepa\Toolkit\Statement\Mt940\Lines;
use Sepa\Toolkit\Statement\Mt940\Splitter;
use Sepa\Toolkit\Xml\Document;

/**
 * Reads one file by what it is.
 *
 * @internal
 */
final class FileReader
{
    /** Root elements of the messages before the first that is read. */
    private const OLD = '/^BkToCstmr(?:AcctRpt|Stmt|DbtCdtNtfctn)V01$/D';

    /** Other messages that customers and banks exchange. */
    private const OTHERS = [
        'CstmrCdtTrfInitn' => 'payments',
        'CstmrDrctDbtInitn' => 'payments',
        'CstmrPmtStsRpt' => 'report',
        'html' => 'html',
    ];

    private File $file;

    private Notes $notes;

    public function __construct(File $file)
    {
        $this->file = $file;
        $this->notes = new Notes();
    }

    /** @return \Generator<Statement|Camt\Builder> */
    public function each(): \Generator
    {
        $kind = $this->file->kind;
        if ($kind === Kind::XML) {
            yield from $this->xml();
        } elseif ($kind === Kind::TEXT) {
            yield from $this->text();
        } elseif ($kind === Kind::EMPTY) {
            $this->file->trouble->code === null && $this->refuse('empty', 'empty');
        } else {
            $this->file->trouble->code === null && $this->refuse('other_kind', $kind);
        }
        if ($this->file->trouble->code === 'workbook') {
            $this->refuse('other_kind', 'workbook');
        } elseif ($this->file->trouble->code !== null) {
            $this->notes->fault($this->file->trouble->code, 0, $this->file->trouble->values);
        }
    }

    /** @return list<Note> */
    public function faults(): array
    {
        return $this->named($this->notes->allFaults());
    }

    /** @return list<Note> */
    public function hints(): array
    {
        return $this->named($this->notes->allHints());
    }

    /** @return \Generator<Statement> */
    private function text(): \Generator
    {
        $notes = $this->file->isMember ? new Notes() : $this->notes;
        foreach ((new Splitter(new Lines($this->file->chunks()), $notes))->each() as $statement) {
            $statement->file = $this->file->name;
            yield $statement;
            unset($statement);
        }
        if ($notes === $this->notes) {
            return;
        }
        // Among other files there may be any text.
        $notes->has(['no_statement']) ? $this->refuse('', Kind::TEXT) : $this->notes->take($notes);
    }

    /** @return \Generator<Camt\Builder> */
    private function xml(): \Generator
    {
        $document = new Document($this->file, array_keys(Tables::ROOTS));
        $root = $document->root;
        if ($document->hasDoctype) {
            $this->notes->fault('doctype', 0);
        } elseif (isset(Tables::ROOTS[$root])) {
            yield from $this->messages($document);
        } elseif (preg_match(self::OLD, $root)) {
            $this->notes->fault('old_form', 0, ['form' => $document->version ?: $root]);
        } elseif ($document->damage() !== null) {
            $this->notes->fault('malformed', 0, ['reason' => $document->damage()]);
        } elseif ($root === '') {
            $this->notes->hint('empty_document', 0);
        } else {
            $this->refuse('other_kind', self::OTHERS[$root] ?? 'xml', $root);
        }
    }

    /** @return \Generator<Camt\Builder> */
    private function messages(Document $document): \Generator
    {
        $isEmpty = true;
        $isBroken = false;
        foreach (Messages::each($document) as $builder) {
            $isEmpty = false;
            $builder->from($this->file->name);
            $isBroken = $builder->isBroken();
            yield $builder;
            unset($builder);
        }
        if ($document->damage() !== null && !$isBroken) {
            $this->notes->fault('malformed', 0, ['reason' => $document->damage()]);
        } elseif ($isEmpty && !$isBroken) {
            $this->notes->hint('empty_document', 0);
        }
    }

    /** Says what it is; among other files that is no fault. */
    private function refuse(string $fault, string $kind, string $root = ''): void
    {
        if ($this->file->isMember) {
            $this->notes->hint('skipped', 0, ['kind' => $kind]);
        } else {
            $this->notes->fault($fault, 0, $fault === 'empty' ? [] : ['kind' => $kind, 'root' => $root]);
        }
    }

    /**
     * @param list<Note> $notes
     * @return list<Note>
     */
    private function named(array $notes): array
    {
        foreach ($notes as $note) {
            $note->file = $this->file->name;
        }

        return $notes;
    }
}
