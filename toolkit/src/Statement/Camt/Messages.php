<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Statement\Camt;

use Sepa\Toolkit\Xml\Document;

/**
 * Walks over a message camt.052, 053 or 054.
 *
 * @internal
 */
final class Messages
{
    /**
     * The statements in it, or pages of them. Damage is told in the one that it breaks.
     *
     * @return \Generator<Builder>
     */
    public static function each(Document $document): \Generator
    {
        $kind = Tables::ROOTS[$document->root];
        $header = [];
        $builder = new Builder($kind);
        $records = $document->records(Tables::all());
        foreach ($records->each() as $name => $values) {
            switch ($records->isWhole() ? $name : "broken $name") {
                case 'transaction':
                    $builder->transaction($values, $records->outer());
                    break;
                case 'entry':
                    $builder->entry($values, $records->outer());
                    break;
                case 'header':
                    $header = $values;
                    break;
                case 'broken statement':
                    $builder->breakOff((string) $document->damage());
                    // no break: what there is of it is told
                case 'statement':
                    $builder->head($values, $header, $document->version ?: $kind);
                    $document->isReencoded() && $builder->notes()->mended('encoding', 0);
                    yield $builder;
                    $builder = new Builder($kind);
            }
            if ($records->overfull() > 0) {
                $builder->notes()->fault('too_long', $builder->number());
            }
        }
    }
}
